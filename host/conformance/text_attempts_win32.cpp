#include "host/conformance/text_attempts_win32.h"

#include <windows.h>
#include <oleauto.h>

#include <array>
#include <cstddef>
#include <optional>
#include <string>

#include "brantel/notifier_contract.h"
#include "host/conformance/text_memory_win32.h"
#include "host/outcome/result_text.h"
#include "system/windows/bstr_win32.h"
#include "system/windows/utf8_text_win32.h"

namespace brantel::host {
namespace {

// Texts of which so many are more than what a process needs for anything else.
constexpr int kLargeTexts = 64;
constexpr std::size_t kLargeText = 64 * 1024;
constexpr std::size_t kMuchMemory = kLargeTexts * kLargeText * sizeof(wchar_t) / 2;

struct OddText {
  const char* what = "";
  std::optional<std::wstring> text;
};

std::array<OddText, 11> OddTexts() {
  return {{{"a null text", std::nullopt},
           {"an empty text", L""},
           {"a percent sign alone", L"%"},
           {"two percent signs", L"%%"},
           {"a percent sign at the end", L"Router %"},
           {"the variables %n and %C", L"%n is down: %C"},
           {"every letter behind a percent sign",
            L"%a%b%c%d%e%f%g%h%i%j%k%l%m%n%o%p%q%r%s%t%u%v%w%x%y%z%A%B%C%D%E%F%G%H%I%J%K%L%M"},
           {"a long text", std::wstring(100000, L'x')},
           {"a text with a NUL in it", std::wstring(L"a\0b", 3)},
           {"half of a surrogate pair", std::wstring(1, L'\xD800')},
           {"Japanese", L"\x30EB\x30FC\x30BF\x30FC %n"}}};
}

// What a host makes of the words.
Bstr Expanded(INotifierHost* host, const std::wstring& words) {
  Bstr text(words);
  const HRESULT result = host->ExpandMessage(text.in_out());
  const std::string fault = FaultOf(text.get());
  if (!fault.empty()) {
    static_cast<void>(text.release());
    throw Fault(fault);
  }
  if (FAILED(result)) throw Fault("it answers " + ResultText(result));
  return text;
}

}  // namespace

Seen TryTexts(const TriedLibrary& library) {
  INotifierHost* const host = library.MakeHost(kAlertItemDown);
  for (const auto& [what, text] : OddTexts()) {
    BSTR words = text ? SysAllocStringLen(text->data(), static_cast<UINT>(text->size())) : nullptr;
    host->ExpandMessage(&words);
    const std::string fault = FaultOf(words);
    if (!fault.empty()) return Broken("of " + std::string(what) + " " + fault);
    SysFreeString(words);
  }
  return Kept();
}

Seen TryWords(const TriedLibrary& library) {
  const std::wstring words = L"Night shift";
  const Bstr text = Expanded(library.MakeHost(kAlertItemDown), words);
  return text.view() == words
             ? Kept()
             : Broken("of 'Night shift' becomes '" + ToUtf8(std::wstring(text.view())) + "'");
}

Seen TryOldText(const TriedLibrary& library) {
  INotifierHost* const host = library.MakeHost(kAlertItemDown);
  const std::wstring large(kLargeText, L'x');
  const std::size_t before = PrivateMemory();
  for (int i = 0; i < kLargeTexts; ++i)
    Expanded(host, large);
  const std::size_t after = PrivateMemory();
  return after < before + kMuchMemory
             ? Kept()
             : Broken("the process has grown by " + std::to_string((after - before) / 1024) +
                      " KB after " + std::to_string(kLargeTexts) + " texts of " +
                      std::to_string(kLargeText * sizeof(wchar_t) / 1024) + " KB");
}

}  // namespace brantel::host
