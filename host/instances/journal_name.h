#pragma once

#include <algorithm>
#include <string_view>

#include "host/text/letter_case.h"

namespace brantel::host {

// The journal that the host keeps beside instances where it is told of no other place.
inline constexpr std::string_view kJournalName = "notifyhost.journal";

// Whether a file of this name belongs to that journal, and is therefore no instance. Older parts of
// it and its lock have something behind the name.
inline bool IsJournalName(std::string_view name) {
  const std::string_view rest = name.substr(std::min(name.size(), kJournalName.size()));
  return EqualIgnoringCase(name.substr(0, kJournalName.size()), kJournalName) &&
         (rest.empty() || rest[0] == '.');
}

}  // namespace brantel::host
