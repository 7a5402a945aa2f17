#pragma once

#include "host/console/console_context.h"
#include "host/console/http_message.h"

namespace brantel::host {

// What became of alerts.
HttpResponse GetJournal(ConsoleContext& console, const ConsoleVisit& visit);
HttpResponse GetJournalEntry(ConsoleContext& console, const ConsoleVisit& visit);

}  // namespace brantel::host
