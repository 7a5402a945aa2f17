#pragma once

#include "host/console/console_context.h"
#include "host/console/http_message.h"

namespace brantel::host {

// Logging in and out.
HttpResponse GetLogIn(ConsoleContext& console, const ConsoleVisit& visit);
HttpResponse PostLogIn(ConsoleContext& console, const ConsoleVisit& visit);
HttpResponse PostLogOut(ConsoleContext& console, const ConsoleVisit& visit);

}  // namespace brantel::host
