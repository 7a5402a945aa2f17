#pragma once

#include <cstddef>
#include <string>

namespace brantel::host {

// A column as wide as the seconds of most alerts.
inline constexpr std::size_t kSecondsWidth = 9;

// In tenths, which is what people can follow: "71.3 s".
std::string SecondsText(double seconds);

// The text with blanks before it, where it is shorter.
std::string RightAligned(const std::string& text, std::size_t width);

}  // namespace brantel::host
