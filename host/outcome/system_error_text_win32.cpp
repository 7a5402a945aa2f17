#include "host/outcome/system_error_text_win32.h"

#include <array>

#include "system/windows/utf8_text_win32.h"

namespace brantel::host {

std::string SystemErrorText(DWORD error) {
  std::array<wchar_t, 512> text{};
  DWORD length = FormatMessageW(FORMAT_MESSAGE_FROM_SYSTEM | FORMAT_MESSAGE_IGNORE_INSERTS, nullptr,
                                error, 0, text.data(), text.size(), nullptr);
  while (length > 0 && text[length - 1] <= L' ')
    --length;
  return "error " + std::to_string(error) + ", " + ToUtf8({text.data(), length});
}

}  // namespace brantel::host
