#pragma once

#include <string>

namespace brantel::host {

// What one try to reach an item came to. The words (UTF-8, without control characters) fit behind
// the item's name and a colon.
struct ProbeResult {
  bool is_up = false;
  std::string words{};

  friend bool operator==(const ProbeResult&, const ProbeResult&) = default;
};

}  // namespace brantel::host
