#pragma once

#include <array>
#include <cstdint>
#include <stdexcept>
#include <string_view>

#include "text/digits.h"

namespace brantel {

// A globally unique identifier in the layout that Windows gives it: 16 bytes, the first three
// groups little-endian in files.
struct Guid {
  std::uint32_t data1 = 0;
  std::uint16_t data2 = 0;
  std::uint16_t data3 = 0;
  std::array<std::uint8_t, 8> data4{};

  friend constexpr bool operator==(const Guid&, const Guid&) = default;
};

namespace guid_detail {

consteval std::uint32_t ParseHex(std::string_view digits) {
  std::uint32_t value = 0;
  for (const char c : digits) {
    std::uint32_t digit = 0;
    if (IsDigit(c)) {
      digit = static_cast<std::uint32_t>(c - '0');
    } else if (c >= 'A' && c <= 'F') {
      digit = static_cast<std::uint32_t>(c - 'A' + 10);
    } else {
      throw std::invalid_argument("GUID digits are 0-9 and A-F");
    }
    value = value * 16 + digit;
  }
  return value;
}

}  // namespace guid_detail

// Parses "8-4-4-4-12" upper-case hexadecimal digits at compile time; a misspelt GUID does not
// compile.
consteval Guid ParseGuid(std::string_view text) {
  if (text.size() != 36 || text[8] != '-' || text[13] != '-' || text[18] != '-' ||
      text[23] != '-') {
    throw std::invalid_argument("a GUID has the form 8-4-4-4-12");
  }
  Guid guid;
  guid.data1 = guid_detail::ParseHex(text.substr(0, 8));
  guid.data2 = static_cast<std::uint16_t>(guid_detail::ParseHex(text.substr(9, 4)));
  guid.data3 = static_cast<std::uint16_t>(guid_detail::ParseHex(text.substr(14, 4)));
  constexpr std::array<std::size_t, 8> kTailOffsets = {19, 21, 24, 26, 28, 30, 32, 34};
  for (std::size_t i = 0; i < kTailOffsets.size(); ++i) {
    guid.data4[i] =
        static_cast<std::uint8_t>(guid_detail::ParseHex(text.substr(kTailOffsets[i], 2)));
  }
  return guid;
}

// The 16 bytes of `guid` as files hold them.
constexpr std::array<std::uint8_t, 16> GuidBytes(const Guid& guid) {
  std::array<std::uint8_t, 16> bytes{};
  for (std::size_t i = 0; i < 4; ++i) {
    bytes[i] = static_cast<std::uint8_t>(guid.data1 >> (8 * i));
  }
  for (std::size_t i = 0; i < 2; ++i) {
    bytes[4 + i] = static_cast<std::uint8_t>(guid.data2 >> (8 * i));
    bytes[6 + i] = static_cast<std::uint8_t>(guid.data3 >> (8 * i));
  }
  for (std::size_t i = 0; i < 8; ++i) {
    bytes[8 + i] = guid.data4[i];
  }
  return bytes;
}

}  // namespace brantel
