#pragma once

#include <cstddef>
#include <string>
#include <string_view>
#include <variant>

namespace brantel::sim {

// The control characters of TAP, the Telocator Alphanumeric Protocol (version 1.8).
namespace tap {
inline constexpr char kStx = '\x02';
inline constexpr char kEtx = '\x03';
inline constexpr char kEot = '\x04';
inline constexpr char kAck = '\x06';
inline constexpr char kCr = '\r';
inline constexpr char kNak = '\x15';
inline constexpr char kEtb = '\x17';
inline constexpr char kEsc = '\x1B';
inline constexpr char kRs = '\x1E';
inline constexpr char kUs = '\x1F';
}  // namespace tap

// What a block carries.
struct TapPage {
  std::string pager_id;
  std::string text;
};

// What is wrong with a block, and how a centre answers it: NAK asks for the block once more, RS
// refuses the page.
struct TapFault {
  char answer;
  std::string what;
};

// The size of the block at the beginning of the bytes, from its STX through the CR behind the
// checksum; 0 when it is not complete.
std::size_t TapBlockSize(std::string_view bytes);

// Reads a whole block of a page that consists of this one block.
std::variant<TapPage, TapFault> ReadTapBlock(std::string_view block);

}  // namespace brantel::sim
