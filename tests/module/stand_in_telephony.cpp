#include "tests/module/stand_in_telephony.h"

#include <tapi.h>

#include <algorithm>
#include <array>
#include <cstring>
#include <string_view>

namespace brantel {
namespace {

constexpr DWORD kVersion = 0x00010004;
constexpr std::wstring_view kLibraryName = L"\\TAPI32.DLL";

LINECALLBACK callback = nullptr;

// By a message of the thread that called, as with the system's.
void CALLBACK TellThatTheCallIsConnected(HWND, UINT, UINT_PTR timer, DWORD) {
  KillTimer(nullptr, timer);
  callback(1, LINE_CALLSTATE, 0, LINECALLSTATE_CONNECTED, 0, 0);
}

LONG WINAPI Initialize(HLINEAPP* application, HINSTANCE, LINECALLBACK told, LPCSTR, DWORD* count) {
  callback = told;
  *application = 1;
  *count = 1;
  return 0;
}

LONG WINAPI NegotiateVersion(HLINEAPP, DWORD, DWORD, DWORD, DWORD* version, LINEEXTENSIONID*) {
  *version = kVersion;
  return 0;
}

LONG WINAPI GetCapabilities(HLINEAPP, DWORD, DWORD, DWORD, LINEDEVCAPS* capabilities) {
  capabilities->dwNeededSize = capabilities->dwUsedSize = sizeof *capabilities;
  capabilities->dwMediaModes = LINEMEDIAMODE_AUTOMATEDVOICE;
  return 0;
}

LONG WINAPI OpenLine(HLINEAPP, DWORD, HLINE* line, DWORD, DWORD, DWORD_PTR, DWORD, DWORD,
                     LINECALLPARAMS*) {
  *line = 1;
  return 0;
}

LONG WINAPI MakeCall(HLINE, HCALL* call, LPCSTR, DWORD, LINECALLPARAMS*) {
  *call = 1;
  SetTimer(nullptr, 0, USER_TIMER_MINIMUM, TellThatTheCallIsConnected);
  return 1;
}

LONG WINAPI GetId(HLINE, DWORD, HCALL, DWORD, VARSTRING* id, LPCSTR) {
  constexpr DWORD kNeeded = sizeof(VARSTRING) + sizeof(DWORD);
  id->dwNeededSize = kNeeded;
  if (id->dwTotalSize < kNeeded) return 0;
  id->dwStringOffset = sizeof(VARSTRING);
  std::memset(id + 1, 0, sizeof(DWORD));
  return 0;
}

LONG WINAPI MonitorDigits(HCALL, DWORD) {
  return 0;
}

LONG WINAPI LetGo(DWORD) {
  return 0;
}

struct Entry {
  std::string_view name;
  void* function;
};

void* Function(auto* function) {
  return reinterpret_cast<void*>(function);
}

const std::array kEntries = {
    Entry{"lineInitialize", Function(Initialize)},
    Entry{"lineNegotiateAPIVersion", Function(NegotiateVersion)},
    Entry{"lineGetDevCapsA", Function(GetCapabilities)},
    Entry{"lineOpenA", Function(OpenLine)},
    Entry{"lineMakeCallA", Function(MakeCall)},
    Entry{"lineGetIDA", Function(GetId)},
    Entry{"lineMonitorDigits", Function(MonitorDigits)},
    Entry{"lineClose", Function(LetGo)},
    Entry{"lineShutdown", Function(LetGo)},
};

HMODULE WINAPI Load(LPCWSTR path, HANDLE file, DWORD flags) {
  const bool is_telephony = std::wstring_view(path).ends_with(kLibraryName);
  return is_telephony ? GetModuleHandleW(nullptr) : LoadLibraryExW(path, file, flags);
}

FARPROC WINAPI Find(HMODULE library, LPCSTR name) {
  if (library != GetModuleHandleW(nullptr)) return GetProcAddress(library, name);
  const auto* const entry = std::ranges::find(kEntries, name, &Entry::name);
  return entry == kEntries.end() ? nullptr : reinterpret_cast<FARPROC>(entry->function);
}

}  // namespace

StandInTelephony::StandInTelephony(HMODULE module)
    : load_(module, "LoadLibraryExW", Function(Load)),
      find_(module, "GetProcAddress", Function(Find)) {}

}  // namespace brantel
