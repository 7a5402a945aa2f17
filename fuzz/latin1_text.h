#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>

#include "fuzz/fuzz_input.h"

namespace brantel {

// Stand-ins for the system's conversions: code page 28591 (Latin-1), in which every byte is a
// character.
inline std::string DecodeLatin1(std::string_view text) {
  std::string decoded;
  for (const char c : text) {
    const auto byte = static_cast<std::uint8_t>(c);
    if (byte < 0x80) {
      decoded += c;
    } else {
      decoded += static_cast<char>(0xC0U | (byte >> 6U));
      decoded += static_cast<char>(0x80U | (byte & 0x3FU));
    }
  }
  return decoded;
}

// Of what DecodeLatin1 has made. A first byte of a character at the end stays as it is.
inline std::string EncodeLatin1(std::string_view text) {
  std::string encoded;
  for (std::size_t i = 0; i < text.size(); ++i) {
    const auto byte = static_cast<std::uint8_t>(text[i]);
    const bool is_whole = byte < 0x80 || i + 1 == text.size();
    encoded += is_whole ? text[i] : static_cast<char>(((byte & 3U) << 6U) | (text[++i] & 0x3F));
  }
  return encoded;
}

// The text may be shown on a terminal: it has no control characters but line feeds.
inline void RequireFitForTerminal(std::string_view text) {
  for (std::size_t i = 0; i < text.size(); ++i) {
    const auto byte = static_cast<std::uint8_t>(text[i]);
    Require(byte == '\n' || (byte >= 0x20 && byte != 0x7F));
    // The control characters behind U+007F.
    if (byte == 0xC2) Require(static_cast<std::uint8_t>(text.at(++i)) >= 0xA0);
  }
}

}  // namespace brantel
