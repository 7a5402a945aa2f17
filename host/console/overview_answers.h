#pragma once

#include "host/console/console_context.h"
#include "host/console/http_message.h"

namespace brantel::host {

// What there is: the overview with what follows it, the classes with their fields, and the files
// of the pages.
HttpResponse GetOverview(ConsoleContext& console, const ConsoleVisit& visit);
HttpResponse GetChanges(ConsoleContext& console, const ConsoleVisit& visit);
HttpResponse GetClasses(ConsoleContext& console, const ConsoleVisit& visit);
HttpResponse GetHelp(ConsoleContext& console, const ConsoleVisit& visit);
HttpResponse GetConsoleFile(ConsoleContext& console, const ConsoleVisit& visit);

}  // namespace brantel::host
