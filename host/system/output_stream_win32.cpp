#include "host/system/output_stream_win32.h"

#include <string>

#include "system/windows/utf8_text_win32.h"

namespace brantel::host {

OutputStream::OutputStream(DWORD standard_stream) noexcept
    : handle_(GetStdHandle(standard_stream)) {
  DWORD mode = 0;
  is_console_ = GetConsoleMode(handle_, &mode) != FALSE;
}

void OutputStream::Write(std::string_view text) const {
  DWORD written = 0;
  if (is_console_) {
    // A console shows bytes in a code page of its own, which need not be UTF-8.
    const std::wstring wide = FromUtf8(text);
    WriteConsoleW(handle_, wide.data(), static_cast<DWORD>(wide.size()), &written, nullptr);
    return;
  }
  while (!text.empty() && WriteFile(handle_, text.data(), static_cast<DWORD>(text.size()), &written,
                                    nullptr) != FALSE) {
    text.remove_prefix(written);
  }
}

bool OutputStream::TakesColours() const {
  if (!is_console_ || GetEnvironmentVariableW(L"NO_COLOR", nullptr, 0) > 1) return false;
  DWORD mode = 0;
  return GetConsoleMode(handle_, &mode) != FALSE &&
         SetConsoleMode(handle_, mode | ENABLE_VIRTUAL_TERMINAL_PROCESSING) != FALSE;
}

}  // namespace brantel::host
