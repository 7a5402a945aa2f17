#pragma once

#include <cstdint>
#include <string>
#include <string_view>

namespace brantel {

// Bytes in the hexadecimal lines by which test programs and their tests exchange them.

inline std::string FromHexadecimal(std::string_view digits) {
  std::string bytes;
  for (std::size_t i = 0; i + 1 < digits.size(); i += 2) {
    bytes += static_cast<char>(std::stoi(std::string(digits.substr(i, 2)), nullptr, 16));
  }
  return bytes;
}

inline std::string ToHexadecimal(std::string_view bytes) {
  constexpr std::string_view kDigits = "0123456789abcdef";
  std::string digits;
  for (const char c : bytes) {
    const auto byte = static_cast<std::uint8_t>(c);
    digits += {kDigits[byte >> 4U], kDigits[byte & 0xFU]};
  }
  return digits;
}

}  // namespace brantel
