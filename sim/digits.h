#pragma once

namespace brantel::sim {

// Whether a character is a decimal digit, whatever the locale.
constexpr bool IsDigit(char c) {
  return c >= '0' && c <= '9';
}

}  // namespace brantel::sim
