#pragma once

#include <string>
#include <string_view>

#include "text/digits.h"

namespace brantel {

// A pager ID without the blanks, signs and whatever else makes it readable.
inline std::string DigitsOf(std::string_view pager_id) {
  std::string digits;
  for (const char c : pager_id) {
    if (IsDigit(c)) digits += c;
  }
  return digits;
}

}  // namespace brantel
