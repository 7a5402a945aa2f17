#pragma once

#include <string>
#include <string_view>

namespace brantel {

constexpr bool IsDigit(char c) {
  return c >= '0' && c <= '9';
}

// A pager ID without the blanks, signs and whatever else makes it readable.
inline std::string DigitsOf(std::string_view pager_id) {
  std::string digits;
  for (const char c : pager_id) {
    if (IsDigit(c)) digits += c;
  }
  return digits;
}

}  // namespace brantel
