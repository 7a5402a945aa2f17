#pragma once

#include "host/console/console_context.h"
#include "host/console/http_message.h"

namespace brantel::host {

// Deleting instances, and putting them back.
HttpResponse PostDelete(ConsoleContext& console, const ConsoleVisit& visit);
HttpResponse GetDeleted(ConsoleContext& console, const ConsoleVisit& visit);
HttpResponse PostUndo(ConsoleContext& console, const ConsoleVisit& visit);
HttpResponse PostForget(ConsoleContext& console, const ConsoleVisit& visit);

// Deletes what could be put back as long as the page about it was not left.
void EndUndo(ConsoleContext& console, const ConsoleVisit& visit, HttpResponse& response);

}  // namespace brantel::host
