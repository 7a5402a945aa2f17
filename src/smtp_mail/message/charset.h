#pragma once

#include <string_view>

namespace brantel {

// The Japanese ANSI code page, Shift_JIS. Its mail is converted to ISO-2022-JP.
inline constexpr unsigned kJapaneseCodePage = 932;

// How mail that is written in an ANSI code page is labelled. Some of the labels do not fit the code
// page, and the two of one row need not agree: deliberately, since relays and readers have been set
// up for what this system has always sent.
struct Charset {
  unsigned code_page;
  std::string_view content_type;         // the header line
  std::string_view encoded_word_prefix;  // begins with a blank
  // What the prefix and the end of the encoded-word take of a header line, at least.
  int reserve;
};

// Null for a code page of which only ASCII can be labelled.
const Charset* FindCharset(unsigned code_page);

// The Content-Type header line of a message, for any code page.
std::string_view ContentTypeLine(unsigned code_page);

}  // namespace brantel
