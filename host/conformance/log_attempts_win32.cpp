#include "host/conformance/log_attempts_win32.h"

#include <windows.h>
#include <oleauto.h>

#include <algorithm>
#include <array>
#include <cstddef>
#include <string>

#include "brantel/notifier_contract.h"
#include "host/conformance/text_memory_win32.h"
#include "system/windows/bstr_win32.h"

namespace brantel::host {
namespace {

constexpr UINT32 kLogLevel = 1;

// What an alert may log, a text at a time.
std::array<std::wstring, 6> LoggedTexts() {
  return {L"dialling ",
          L"5550101\r\n",
          L"\r",
          L"",
          L" <tab>\t%n & \x30EB\x30FC\x30BF\x30FC\x1B\n",
          std::wstring(5000, L'x')};
}

}  // namespace

Seen TryLogText(const TriedLibrary& library) {
  INotifierHost* const host = library.MakeHost(kAlertItemDown);
  for (const std::size_t length : {std::size_t{20}, std::size_t{2000}}) {
    const std::wstring words(length, L'l');
    const BSTR text = SysAllocStringLen(words.data(), static_cast<UINT>(length));
    host->LogMessage(kLogLevel, text);
    if (IsFreed(text, static_cast<UINT>(length))) return Broken("it frees the text");
    if (Bstr::ViewOf(text) != words) return Broken("it changes the text");
    SysFreeString(text);
  }
  return Kept();
}

Seen TryLog(const TriedLibrary& library) {
  INotifierHost* const host = library.MakeHost(kAlertItemDown);
  if (!library.ReadLog(host)) return NotTried("ReadNotifierLog is not exported");
  std::wstring logged;
  for (const std::wstring& text : LoggedTexts()) {
    const Bstr line(text);
    host->LogMessage(kLogLevel, line.get());
    logged += text;
  }
  const Bstr log = *library.ReadLog(host);
  if (log.view() == logged) return Kept();
  const auto [expected, read] = std::ranges::mismatch(logged, log.view());
  return Broken("the log is another behind the first " + std::to_string(expected - logged.begin()) +
                " characters");
}

}  // namespace brantel::host
