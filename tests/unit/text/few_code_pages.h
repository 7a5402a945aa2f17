#pragma once

#include <map>
#include <string>
#include <string_view>

#include "text/code_page.h"

namespace brantel {

// Enough of code page 1252 for tests.
class CodePage1252 final : public CodePage {
 public:
  [[nodiscard]] bool IsLeadByte(char /*byte*/) const override { return false; }

  [[nodiscard]] std::u16string ToUtf16(std::string_view text) const override {
    std::u16string wide;
    for (const char byte : text) {
      const auto code = static_cast<unsigned char>(byte);
      wide += code == 0x80 ? u'\u20AC' : static_cast<char16_t>(code);
    }
    return wide;
  }
};

// Enough of code page 932 for tests: ASCII, and the two characters of the word for telephone. Other
// double-byte characters become a letter of the far east each.
class CodePage932 final : public CodePage {
 public:
  [[nodiscard]] bool IsLeadByte(char c) const override {
    const auto byte = static_cast<unsigned char>(c);
    return (byte >= 0x81 && byte <= 0x9F) || (byte >= 0xE0 && byte <= 0xFC);
  }

  [[nodiscard]] std::u16string ToUtf16(std::string_view text) const override {
    static const std::map<std::string_view, char16_t> kDoubleByte = {{"\x93\x64", u'\u96FB'},
                                                                     {"\x98\x62", u'\u8A71'}};
    std::u16string wide;
    for (std::size_t i = 0; i < text.size(); ++i) {
      if (!IsLeadByte(text[i]) || i + 1 == text.size()) {
        wide += static_cast<char16_t>(static_cast<unsigned char>(text[i]));
        continue;
      }
      const auto found = kDoubleByte.find(text.substr(i, 2));
      wide += found == kDoubleByte.end() ? u'\u4E00' : found->second;
      ++i;
    }
    return wide;
  }
};

inline const CodePage1252 kCodePage1252;
inline const CodePage932 kCodePage932;

}  // namespace brantel
