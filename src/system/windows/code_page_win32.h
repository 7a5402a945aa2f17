#pragma once

#include "system/windows/ansi_text_win32.h"
#include "text/code_page.h"

namespace brantel {

// The system's ANSI code page.
class SystemCodePage final : public CodePage {
 public:
  [[nodiscard]] bool IsLeadByte(char byte) const override { return brantel::IsLeadByte(byte); }

  [[nodiscard]] std::u16string ToUtf16(std::string_view text) const override {
    const std::wstring wide = FromAnsi(text);
    return {wide.begin(), wide.end()};
  }
};

// Stateless, so that all use this one.
inline constinit SystemCodePage system_code_page;

}  // namespace brantel
