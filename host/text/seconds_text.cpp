#include "host/text/seconds_text.h"

#include <algorithm>
#include <cmath>

namespace brantel::host {

std::string SecondsText(double seconds) {
  const auto tenths = std::llround(seconds * 10);
  return std::to_string(tenths / 10) + "." + std::to_string(tenths % 10) + " s";
}

std::string RightAligned(const std::string& text, std::size_t width) {
  return std::string(width - std::min(width, text.size()), ' ') + text;
}

}  // namespace brantel::host
