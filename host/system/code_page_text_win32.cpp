#include "host/system/code_page_text_win32.h"

#include "system/windows/ansi_text_win32.h"
#include "system/windows/utf8_text_win32.h"

namespace brantel::host {

std::string FromCodePage(std::string_view text) {
  return ToUtf8(FromAnsi(text));
}

std::optional<std::string> ToCodePage(std::string_view text) {
  const std::wstring wide = FromUtf8(text);
  std::string encoded = ToAnsi(wide);
  // A character that the code page lacks has become another one.
  if (FromAnsi(encoded) != wide) return std::nullopt;
  return encoded;
}

}  // namespace brantel::host
