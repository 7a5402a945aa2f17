#pragma once

#include <cstddef>
#include <string>
#include <string_view>

// Conversions of Japanese text between Shift_JIS, EUC-JP and the 7-bit JIS forms. They go by the
// arithmetic that ties these encodings of JIS X 0208 together, so that cells without a character
// pass as well. Bytes that are no text of the source encoding are copied.

namespace brantel {

constexpr bool IsShiftJisLeadByte(char c) {
  const auto byte = static_cast<unsigned char>(c);
  return (byte >= 0x81 && byte <= 0x9F) || (byte >= 0xE0 && byte <= 0xFC);
}

// Half-width katakana become single bytes.
std::string EucJpToShiftJis(std::string_view text);

// Takes all JIS forms. Kanji end at any escape sequence that does not open them, and with the line.
std::string JisToShiftJis(std::string_view text);

// Converts by what DetectJapaneseCode says. Text that may be EUC-JP or Shift_JIS is deliberately
// taken for EUC-JP.
std::string ToShiftJis(std::string_view text);

// Where Shift_JIS text is cut.
struct ShiftJisCut {
  std::size_t longest;  // a text of this many bytes is left as it is
  std::size_t length;   // of what is left of a longer one
  std::size_t checked;  // instead, when a character of two bytes begins behind so many
};

// For a converted text. It deliberately goes two bytes back, although the character would have
// found room.
inline constexpr ShiftJisCut kConvertedTextCut = {999, 999, 997};
// For the message on a page.
inline constexpr ShiftJisCut kPageTextCut = {99, 100, 99};

std::string_view CutShiftJis(std::string_view text, const ShiftJisCut& cut);

// To ISO-2022-JP. Pairs are told by their high bits alone, so a half-width katakana becomes a pair
// too. Stops once the result has `capacity` bytes; only the closing escape sequence can come behind
// that.
std::string EucJpToJis(std::string_view text, std::size_t capacity);

// To ISO-2022-JP. Half-width katakana become full-width ones, in which a sound mark that follows is
// taken up. Stops when fewer than four bytes are left of the room, which the escape sequences can
// exceed by a few bytes all the same. So text to which its own length is given as room deliberately
// loses its last characters.
std::string ShiftJisToJis(std::string_view text, std::size_t room);

}  // namespace brantel
