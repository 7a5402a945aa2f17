#include "sim/messenger/environment_win32.h"

#include <cstdlib>

namespace brantel::sim {

std::wstring Setting(const wchar_t* name, const wchar_t* otherwise) {
  std::wstring text(GetEnvironmentVariableW(name, nullptr, 0), L'\0');
  if (text.empty()) return otherwise;
  text.resize(GetEnvironmentVariableW(name, text.data(), static_cast<DWORD>(text.size())));
  return text;
}

DWORD NumberSetting(const wchar_t* name) {
  return std::wcstoul(Setting(name).c_str(), nullptr, 10);
}

std::string ToUtf8(std::wstring_view text) {
  const int length = static_cast<int>(text.size());
  const int needed =
      WideCharToMultiByte(CP_UTF8, 0, text.data(), length, nullptr, 0, nullptr, nullptr);
  std::string narrow(static_cast<std::size_t>(needed), '\0');
  WideCharToMultiByte(CP_UTF8, 0, text.data(), length, narrow.data(), needed, nullptr, nullptr);
  return narrow;
}

void Report(const wchar_t* name, const std::string& text) {
  const std::wstring path = Setting(name);
  if (path.empty()) return;
  HANDLE file = CreateFileW(path.c_str(), FILE_APPEND_DATA, FILE_SHARE_READ | FILE_SHARE_WRITE,
                            nullptr, OPEN_ALWAYS, FILE_ATTRIBUTE_NORMAL, nullptr);
  if (file == INVALID_HANDLE_VALUE) return;
  DWORD written = 0;
  WriteFile(file, text.data(), static_cast<DWORD>(text.size()), &written, nullptr);
  CloseHandle(file);
}

}  // namespace brantel::sim
