#include "system/windows/ansi_text_win32.h"

#include <windows.h>

#include <limits>
#include <stdexcept>

namespace brantel {
namespace {

int IntLength(std::size_t length) {
  if (length > static_cast<std::size_t>(std::numeric_limits<int>::max() / 4)) {
    throw std::length_error("text too long to convert");
  }
  return static_cast<int>(length);
}

std::string Narrow(std::wstring_view text, DWORD flags) {
  const int length = IntLength(text.size());
  const int needed =
      WideCharToMultiByte(CP_ACP, flags, text.data(), length, nullptr, 0, nullptr, nullptr);
  std::string narrow(static_cast<std::size_t>(needed), '\0');
  WideCharToMultiByte(CP_ACP, flags, text.data(), length, narrow.data(), needed, nullptr, nullptr);
  return narrow;
}

}  // namespace

std::string ToAnsi(std::wstring_view text) {
  return Narrow(text, 0);
}

std::wstring FromAnsi(std::string_view text) {
  const int length = IntLength(text.size());
  const int needed = MultiByteToWideChar(CP_ACP, 0, text.data(), length, nullptr, 0);
  std::wstring wide(static_cast<std::size_t>(needed), L'\0');
  MultiByteToWideChar(CP_ACP, 0, text.data(), length, wide.data(), needed);
  return wide;
}

std::string ToAnsiPath(std::wstring_view path) {
  return Narrow(path.substr(0, path.find(L'\0')), WC_NO_BEST_FIT_CHARS);
}

bool IsLeadByte(char byte) {
  return IsDBCSLeadByte(static_cast<BYTE>(byte)) != FALSE;
}

}  // namespace brantel
