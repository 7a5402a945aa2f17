#pragma once

#include "host/console/console_context.h"
#include "host/console/http_message.h"

namespace brantel::host {

// Acknowledging that something that is watched is down.
HttpResponse GetAcknowledge(ConsoleContext& console, const ConsoleVisit& visit);
HttpResponse PostAcknowledge(ConsoleContext& console, const ConsoleVisit& visit);

}  // namespace brantel::host
