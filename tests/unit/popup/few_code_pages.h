#pragma once

#include <map>
#include <string>
#include <string_view>

namespace brantel {

// Enough of code page 1252 for tests.
inline std::u16string FromCodePage1252(std::string_view text) {
  std::u16string wide;
  for (const char byte : text) {
    const auto code = static_cast<unsigned char>(byte);
    wide += code == 0x80 ? u'\u20AC' : static_cast<char16_t>(code);
  }
  return wide;
}

// Enough of code page 932 for tests: ASCII, and the two characters of the word for telephone.
inline std::u16string FromCodePage932(std::string_view text) {
  static const std::map<std::string_view, char16_t> kDoubleByte = {{"\x93\x64", u'\u96FB'},
                                                                   {"\x98\x62", u'\u8A71'}};
  std::u16string wide;
  for (std::size_t i = 0; i < text.size(); ++i) {
    const auto found = kDoubleByte.find(text.substr(i, 2));
    if (found != kDoubleByte.end()) {
      wide += found->second;
      ++i;
    } else {
      wide += static_cast<char16_t>(text[i]);
    }
  }
  return wide;
}

}  // namespace brantel
