#pragma once

#include <cstddef>
#include <string>
#include <string_view>

namespace brantel {

// Whether a text holds a byte that a mail header cannot: one of 127 or above.
bool HasHighBytes(std::string_view text);

// A header line's text, to which its line end belongs, as it is sent from a machine with this ANSI
// code page. What stands before the first byte of 127 or above, or the first ESC, is copied; what
// follows becomes one encoded-word of RFC 2047 (form "Q") as far as that goes, and behind it the
// text goes on in plain ASCII. Without a label for the code page what follows stays as it is.
//
// 8-bit text for which the encoded-word has no room is dropped, deliberately, as is everything
// behind a plain beginning that leaves less room in `limit` bytes than an encoded-word takes, the
// line end with it. Where Japanese text is converted, that takes its line end along, and drops it
// as it drops any text that finds no room. But no line end comes to those of the text: where what
// is no character of EUC-JP would turn into one by its conversion, the text before its own line end
// ends.
std::string EncodeHeaderText(std::string_view text, unsigned code_page, int limit);

// Writes `text` in the form "Q" behind `destination` until 55 characters or, if that is less,
// `room` - 2 are written, or nothing is left that needs encoding, or a line ends. Returns how much
// of the text is done. The closing escape sequence of Japanese text is written whole at any length.
std::size_t QEncode(std::string_view text, std::string& destination, int room);

}  // namespace brantel
