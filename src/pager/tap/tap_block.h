#pragma once

#include <cstddef>
#include <string>
#include <string_view>

// The blocks of the Telocator Alphanumeric Protocol (TAP): STX, pager ID, CR, message, CR, ETX,
// checksum, CR. A page is one block.

namespace brantel {

// What the kinds of TAP put into a block differently.
struct TapBlockRules {
  // Whether the pager ID begins with its first digit that is not 0.
  bool skips_leading_zeros = false;
  // The message ends when ID, the CR behind it and message have so many characters.
  std::size_t capacity = 0;
};

// The ID's digits, and the message as far as it is printable ASCII, its carriage returns as blanks.
std::string BuildTapBlock(std::string_view pager_id, std::string_view message,
                          const TapBlockRules& rules);

// The checksum of the bytes from STX to ETX: the low twelve bits of their sum, four to a character
// from "0" on.
std::string TapChecksum(std::string_view block);

}  // namespace brantel
