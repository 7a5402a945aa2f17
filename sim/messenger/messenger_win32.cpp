// A messenger service that shows nothing and writes down what it is given. It takes the place of
// the system's network library; docs/simulators.md tells how, and by which environment variables it
// is told what to do.
#include <windows.h>
#include <lm.h>

#include <array>
#include <cstdint>
#include <cstdio>
#include <cstring>
#include <string>
#include <string_view>
#include <vector>

#include "sim/messenger/environment_win32.h"

namespace brantel::sim {
namespace {

constexpr const wchar_t* kReport = L"MESSENGER_REPORT";

void ReportModule(const char* event, HINSTANCE module) {
  std::array<wchar_t, MAX_PATH> path{};
  GetModuleFileNameW(module, path.data(), MAX_PATH);
  Report(kReport, std::string(event) + " " + ToUtf8(path.data()) + "\n");
}

std::string Hexadecimal(const BYTE* data, DWORD size) {
  constexpr std::string_view kDigits = "0123456789ABCDEF";
  std::string text;
  for (DWORD i = 0; i < size; ++i) {
    text += kDigits[data[i] >> 4U];
    text += kDigits[data[i] & 0xFU];
  }
  return text;
}

std::string NameOrNull(const wchar_t* name) {
  return name == nullptr ? "(null)" : ToUtf8(name);
}

// What the buffer shows on a screen, on one line.
std::string Shown(const BYTE* buffer, DWORD size) {
  std::wstring text(size / sizeof(wchar_t), L'\0');
  std::memcpy(text.data(), buffer, text.size() * sizeof(wchar_t));
  std::wstring shown;
  for (const wchar_t c : text.substr(0, text.find(L'\0'))) {
    shown += c < L' ' ? L' ' : c;
  }
  return ToUtf8(shown);
}

std::vector<std::wstring> MessageNames() {
  std::vector<std::wstring> names;
  Split(Setting(L"MESSENGER_NAMES", L"WATCH"), L',',
        [&](std::wstring_view name) { names.emplace_back(name); });
  return names;
}

// The names as a caller of the library gets them: the entries, and behind them the texts.
BYTE* NamesBuffer(const std::vector<std::wstring>& names) {
  std::size_t size = names.size() * sizeof(MSG_INFO_0);
  for (const std::wstring& name : names) {
    size += (name.size() + 1) * sizeof(wchar_t);
  }
  auto* const buffer = static_cast<BYTE*>(HeapAlloc(GetProcessHeap(), 0, size));
  if (buffer == nullptr) return nullptr;
  auto* entry = reinterpret_cast<MSG_INFO_0*>(buffer);
  auto* text = reinterpret_cast<wchar_t*>(entry + names.size());
  for (const std::wstring& name : names) {
    entry->msgi0_name = text;
    ++entry;
    text = std::wmemcpy(text, name.c_str(), name.size() + 1) + name.size() + 1;
  }
  return buffer;
}

}  // namespace
}  // namespace brantel::sim

// NOLINTBEGIN(readability-non-const-parameter,misc-use-internal-linkage): the library's own
// interface
extern "C" {

BOOL WINAPI DllMain(HINSTANCE module, DWORD reason, void* /*process_ends*/) {
  if (reason == DLL_PROCESS_ATTACH) brantel::sim::ReportModule("loaded", module);
  if (reason == DLL_PROCESS_DETACH) brantel::sim::ReportModule("unloaded", module);
  return TRUE;
}

NET_API_STATUS WINAPI NetMessageBufferSend(LPCWSTR server, LPCWSTR name, LPCWSTR sender,
                                           LPBYTE buffer, DWORD size) {
  using namespace brantel::sim;
  Sleep(NumberSetting(L"MESSENGER_DELAY"));
  const DWORD answer = NumberSetting(L"MESSENGER_ANSWER");
  Report(kReport, "message for " + NameOrNull(name) + ": " + Shown(buffer, size) + "\n  server " +
                      NameOrNull(server) + ", sender " + NameOrNull(sender) + ", answer " +
                      std::to_string(answer) + ", " + std::to_string(size) + " bytes\n  " +
                      Hexadecimal(buffer, size) + "\n");
  return answer;
}

NET_API_STATUS WINAPI NetMessageNameEnum(LPCWSTR server, DWORD level, LPBYTE* buffer, DWORD limit,
                                         LPDWORD count, LPDWORD total, LPDWORD /*resume*/) {
  using namespace brantel::sim;
  Sleep(NumberSetting(L"MESSENGER_DELAY"));
  const DWORD answer = NumberSetting(L"MESSENGER_ANSWER");
  Report(kReport, "names asked for: server " + NameOrNull(server) + ", level " +
                      std::to_string(level) + ", at most " + std::to_string(limit) +
                      " bytes, answer " + std::to_string(answer) + "\n");
  if (answer != NERR_Success) return answer;
  const auto names = MessageNames();
  *count = *total = static_cast<DWORD>(names.size());
  *buffer = NamesBuffer(names);
  return *buffer == nullptr ? ERROR_NOT_ENOUGH_MEMORY : NERR_Success;
}

NET_API_STATUS WINAPI NetApiBufferFree(LPVOID buffer) {
  HeapFree(GetProcessHeap(), 0, buffer);
  brantel::sim::Report(brantel::sim::kReport, "buffer freed\n");
  return NERR_Success;
}

// Nobody needs more of these two than that they are there.

NET_API_STATUS WINAPI NetServerEnum(LMCSTR, DWORD, LPBYTE*, DWORD, LPDWORD, LPDWORD, DWORD, LMCSTR,
                                    LPDWORD) {
  return ERROR_NOT_SUPPORTED;
}

NET_API_STATUS WINAPI NetWkstaGetInfo(LMSTR, DWORD, LPBYTE*) {
  return ERROR_NOT_SUPPORTED;
}

}  // extern "C"
// NOLINTEND(readability-non-const-parameter,misc-use-internal-linkage)
