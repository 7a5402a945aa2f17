#pragma once

#include <string>

namespace brantel::host {

enum class EventKind { kInformation, kError };

// Puts a text into the computer's event log, as an event of the application notifyhost with the
// number 1. False when the system takes none.
bool ReportToEventLog(EventKind kind, const std::string& text);

}  // namespace brantel::host
