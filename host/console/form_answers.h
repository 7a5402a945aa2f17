#pragma once

#include "host/console/console_context.h"
#include "host/console/http_message.h"

namespace brantel::host {

// Adding and editing instances: the pages around the module's own ones, and the console's forms.
HttpResponse GetAdd(ConsoleContext& console, const ConsoleVisit& visit);
HttpResponse GetEdit(ConsoleContext& console, const ConsoleVisit& visit);
HttpResponse GetAddForm(ConsoleContext& console, const ConsoleVisit& visit);
HttpResponse PostAddForm(ConsoleContext& console, const ConsoleVisit& visit);
HttpResponse GetEditForm(ConsoleContext& console, const ConsoleVisit& visit);
HttpResponse PostEditForm(ConsoleContext& console, const ConsoleVisit& visit);

}  // namespace brantel::host
