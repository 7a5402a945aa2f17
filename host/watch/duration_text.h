#pragma once

#include <chrono>
#include <optional>
#include <string>
#include <string_view>

namespace brantel::host {

// Reads a length of time such as "500ms", "30s", "5m", "12h" or "7d". Nothing when it is none, or
// beyond a year.
std::optional<std::chrono::milliseconds> ParseDuration(std::string_view text);

// The length for people, in the largest unit of which it is a whole number: "90 s", "2 min".
std::string DurationText(std::chrono::milliseconds duration);

}  // namespace brantel::host
