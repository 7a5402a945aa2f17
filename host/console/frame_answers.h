#pragma once

#include "host/console/console_context.h"
#include "host/console/http_message.h"

namespace brantel::host {

// The module's own pages, which are shown in frames, with where they lead.
HttpResponse GetFrameAdd(ConsoleContext& console, const ConsoleVisit& visit);
HttpResponse GetFrameEdit(ConsoleContext& console, const ConsoleVisit& visit);
HttpResponse PostFrame(ConsoleContext& console, const ConsoleVisit& visit);
HttpResponse GetFrameHelp(ConsoleContext& console, const ConsoleVisit& visit);
HttpResponse GetStepToInstances(ConsoleContext& console, const ConsoleVisit& visit);
HttpResponse GetStepToOverview(ConsoleContext& console, const ConsoleVisit& visit);

// Whether a frame is to show what is asked for.
bool IsWithinFrame(const HttpRequest& request);

}  // namespace brantel::host
