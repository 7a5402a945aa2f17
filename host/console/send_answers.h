#pragma once

#include "host/console/console_context.h"
#include "host/console/http_message.h"

namespace brantel::host {

// Tests of instances.
HttpResponse PostSend(ConsoleContext& console, const ConsoleVisit& visit);
HttpResponse GetSend(ConsoleContext& console, const ConsoleVisit& visit);
HttpResponse GetSendEvents(ConsoleContext& console, const ConsoleVisit& visit);

}  // namespace brantel::host
