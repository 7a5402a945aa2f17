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

constexpr DWORD kWithLikenesses = 0;

// UTF-8 has all characters, and takes no such flag.
DWORD WithoutLikenesses() {
  return GetACP() == CP_UTF8 ? kWithLikenesses : WC_NO_BEST_FIT_CHARS;
}

// Whether a character in the code page is ASCII and neither a letter nor a digit.
bool IsSign(std::string_view character) {
  constexpr std::string_view kLettersAndDigits =
      "0123456789"
      "ABCDEFGHIJKLMNOPQRSTUVWXYZ"
      "abcdefghijklmnopqrstuvwxyz";
  return character.size() == 1 && static_cast<unsigned char>(character[0]) < 0x80 &&
         kLettersAndDigits.find(character[0]) == std::string_view::npos;
}

}  // namespace

std::string ToAnsi(std::wstring_view text) {
  std::string narrow = Narrow(text, kWithLikenesses);
  const DWORD exactly = WithoutLikenesses();
  if (narrow == Narrow(text, exactly)) return narrow;

  narrow.clear();
  for (const wchar_t& c : text) {
    const std::wstring_view character(&c, 1);
    const std::string likeness = Narrow(character, kWithLikenesses);
    narrow += IsSign(likeness) ? Narrow(character, exactly) : likeness;
  }
  return narrow;
}

std::wstring FromAnsi(std::string_view text) {
  const int length = IntLength(text.size());
  const int needed = MultiByteToWideChar(CP_ACP, 0, text.data(), length, nullptr, 0);
  std::wstring wide(static_cast<std::size_t>(needed), L'\0');
  MultiByteToWideChar(CP_ACP, 0, text.data(), length, wide.data(), needed);
  return wide;
}

std::string ToAnsiPath(std::wstring_view path) {
  return Narrow(path.substr(0, path.find(L'\0')), WithoutLikenesses());
}

bool IsLeadByte(char byte) {
  return IsDBCSLeadByte(static_cast<BYTE>(byte)) != FALSE;
}

}  // namespace brantel
