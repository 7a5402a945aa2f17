#include "host/conformance/conformance_trial_win32.h"

#include <objbase.h>
#include <oleauto.h>

#include <algorithm>
#include <array>
#include <charconv>
#include <cstddef>
#include <cstdint>
#include <optional>
#include <stdexcept>
#include <string>
#include <string_view>

#include "brantel/host_conformance.h"
#include "brantel/notifier_contract.h"
#include "host/conformance/conformance_check.h"
#include "host/outcome/result_text.h"
#include "host/outcome/system_error_text_win32.h"
#include "system/windows/bstr_win32.h"
#include "system/windows/handle_win32.h"
#include "system/windows/utf8_text_win32.h"

namespace brantel::host {
namespace {

// No command of that name: who starts the program so knows what comes behind.
constexpr const char* kTrialArgument = "--try-host";

// An interface that no host has.
constexpr IID kNobodysInterface = {
    0x51C7DBD6, 0x3A0E, 0x4D54, {0x93, 0x28, 0x6B, 0xC4, 0x0F, 0x51, 0x7E, 0xA9}};

constexpr UINT32 kLogLevel = 1;

// Texts of which so many are more than what a process needs for anything else.
constexpr int kLargeTexts = 64;
constexpr std::size_t kLargeText = 256 * 1024;
constexpr std::size_t kMuchMemory = kLargeTexts * kLargeText * sizeof(wchar_t) / 2;

// There is no object to go on with.
class NoObject : public std::runtime_error {
 public:
  using std::runtime_error::runtime_error;
};

// What was seen breaks the rule.
class Fault : public std::runtime_error {
 public:
  using std::runtime_error::runtime_error;
};

// What became of a check.
struct Seen {
  CheckState state = CheckState::kKept;
  std::string words{};
};

Seen Kept() {
  return {};
}
Seen Broken(std::string words) {
  return {CheckState::kBroken, std::move(words)};
}
Seen NotTried(std::string words) {
  return {CheckState::kNotTried, std::move(words)};
}

INotifierHost* HostOf(IUnknown* object) {
  void* offered = nullptr;
  const HRESULT result = object->QueryInterface(IID_INotifierHost, &offered);
  if (FAILED(result)) throw NoObject("QueryInterface answers " + ResultText(result));
  if (offered == nullptr) throw NoObject("QueryInterface stores no pointer");
  return static_cast<INotifierHost*>(offered);
}

// The library with the host.
class HostLibrary {
 public:
  // Throws NoObject when it cannot be loaded or has no MakeNotifierHost.
  explicit HostLibrary(const std::wstring& file)
      : library_(LoadLibraryExW(file.c_str(), nullptr, LOAD_WITH_ALTERED_SEARCH_PATH)) {
    if (library_ == nullptr)
      throw NoObject(ToUtf8(file) + " cannot be loaded: " + SystemErrorText(GetLastError()));
    make_ = FindExport<decltype(&MakeNotifierHost)>("MakeNotifierHost");
    read_log_ = FindExport<decltype(&ReadNotifierLog)>("ReadNotifierLog");
    if (make_ == nullptr) throw NoObject(ToUtf8(file) + " does not export MakeNotifierHost");
  }

  // A new object. Nobody releases it but the checks that are about that: one that counts wrongly is
  // not to fail elsewhere, and the process ends soon.
  [[nodiscard]] IUnknown* Make(std::optional<UINT32> event) const {
    IUnknown* made = nullptr;
    const HRESULT result = make_(event ? &*event : nullptr, &made);
    if (FAILED(result)) throw NoObject("MakeNotifierHost answers " + ResultText(result));
    if (made == nullptr) throw NoObject("MakeNotifierHost stores no object");
    return made;
  }

  [[nodiscard]] INotifierHost* MakeHost(std::optional<UINT32> event) const {
    return HostOf(Make(event));
  }

  // Nothing when it is not exported.
  [[nodiscard]] std::optional<Bstr> ReadLog(INotifierHost* host) const {
    if (read_log_ == nullptr) return std::nullopt;
    Bstr log;
    const HRESULT result = read_log_(host, log.in_out());
    if (FAILED(result)) throw NoObject("ReadNotifierLog answers " + ResultText(result));
    return log;
  }

 private:
  template <typename Export>
  [[nodiscard]] Export FindExport(const char* name) const {
    return reinterpret_cast<Export>(reinterpret_cast<void*>(GetProcAddress(library_, name)));
  }

  HMODULE library_;
  decltype(&MakeNotifierHost) make_ = nullptr;
  decltype(&ReadNotifierLog) read_log_ = nullptr;
};

// Objects that live as long as their host may answer anything there.
bool CountsReferences(IUnknown* object) {
  const ULONG one_more = object->AddRef();
  const ULONG two_more = object->AddRef();
  object->Release();
  object->Release();
  return two_more == one_more + 1;
}

ULONG ReferencesOf(IUnknown* object) {
  object->AddRef();
  return object->Release();
}

// Whether the memory behind the pointer can be read.
bool IsReadable(const void* begin, std::size_t size) {
  MEMORY_BASIC_INFORMATION region{};
  const auto* const at = static_cast<const char*>(begin);
  if (VirtualQuery(at, &region, sizeof region) == 0 || region.State != MEM_COMMIT ||
      (region.Protect & (PAGE_NOACCESS | PAGE_GUARD)) != 0)
    return false;
  const auto* const end = static_cast<const char*>(region.BaseAddress) + region.RegionSize;
  return at + size <= end || IsReadable(end, static_cast<std::size_t>(at + size - end));
}

// Memory that is given back comes again for the next texts of its size.
bool IsFreed(BSTR text, UINT length) {
  std::array<BSTR, 16> others{};
  for (BSTR& other : others)
    other = SysAllocStringLen(nullptr, length);
  const bool is_freed = std::ranges::find(others, text) != others.end();
  for (BSTR other : others) {
    if (other != text) SysFreeString(other);
  }
  return is_freed;
}

// What is wrong with a text that a host has left; nothing where it is a BSTR or null.
std::string FaultOf(BSTR text) {
  if (text == nullptr) return "";
  const auto* const bytes = reinterpret_cast<const char*>(text);
  if (!IsReadable(bytes - sizeof(UINT32), sizeof(UINT32)) ||
      !IsReadable(text, SysStringByteLen(text) + sizeof(wchar_t)) ||
      SysStringByteLen(text) % sizeof(wchar_t) != 0 || text[SysStringLen(text)] != L'\0')
    return "it leaves what is no BSTR";
  return IsFreed(text, SysStringLen(text)) ? "it leaves a text that it has freed" : "";
}

// The memory that this process has for itself.
std::size_t PrivateMemory() {
  std::size_t total = 0;
  MEMORY_BASIC_INFORMATION region{};
  for (const char* at = nullptr; VirtualQuery(at, &region, sizeof region) != 0;
       at = static_cast<const char*>(region.BaseAddress) + region.RegionSize) {
    if (region.State == MEM_COMMIT && region.Type == MEM_PRIVATE) total += region.RegionSize;
  }
  return total;
}

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

Seen TryInterface(const HostLibrary& library) {
  try {
    static_cast<void>(library.MakeHost(kAlertItemDown));
    return Kept();
  } catch (const NoObject& reason) {
    return Broken(reason.what());
  }
}

Seen TryIdentity(const HostLibrary& library) {
  IUnknown* const object = library.Make(kAlertItemDown);
  void* of_object = nullptr;
  void* of_interface = nullptr;
  const HRESULT first = object->QueryInterface(IID_IUnknown, &of_object);
  const HRESULT second = HostOf(object)->QueryInterface(IID_IUnknown, &of_interface);
  if (FAILED(first) || FAILED(second)) return Broken("QueryInterface has no IUnknown");
  return of_object == of_interface ? Kept() : Broken("it has two");
}

Seen TryUnknownInterface(const HostLibrary& library) {
  int anything = 0;
  void* stored = &anything;
  const HRESULT result = library.Make(kAlertItemDown)->QueryInterface(kNobodysInterface, &stored);
  if (result != E_NOINTERFACE) return Broken("it answers " + ResultText(result));
  return stored == nullptr ? Kept() : Broken("it does not store null");
}

Seen TryReferences(const HostLibrary& library) {
  IUnknown* const object = library.Make(kAlertItemDown);
  if (!CountsReferences(object)) return NotTried("it does not count references");
  const ULONG before = ReferencesOf(object);
  INotifierHost* const stored = HostOf(object);
  const ULONG with_pointer = ReferencesOf(object);
  if (with_pointer != before + 1)
    return Broken("of QueryInterface " + std::to_string(before) + " become " +
                  std::to_string(with_pointer));
  stored->Release();
  return ReferencesOf(object) == before ? Kept() : Broken("Release takes none away");
}

Seen TryTexts(const HostLibrary& library) {
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

Seen TryWords(const HostLibrary& library) {
  const std::wstring words = L"Night shift";
  const Bstr text = Expanded(library.MakeHost(kAlertItemDown), words);
  return text.view() == words
             ? Kept()
             : Broken("of 'Night shift' becomes '" + ToUtf8(std::wstring(text.view())) + "'");
}

Seen TryOldText(const HostLibrary& library) {
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

Seen TryLogText(const HostLibrary& library) {
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

Seen TryLog(const HostLibrary& library) {
  INotifierHost* const host = library.MakeHost(kAlertItemDown);
  if (!library.ReadLog(host)) return NotTried("ReadNotifierLog is not exported");
  std::wstring logged;
  for (const std::wstring& text :
       {std::wstring(L"dialling "), std::wstring(L"5550101\r\n"), std::wstring(L"\r"),
        std::wstring(), std::wstring(L" <tab>\t%n & \x30EB\x30FC\x30BF\x30FC\x1B\n"),
        std::wstring(5000, L'x')}) {
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

Seen TryEvent(const HostLibrary& library) {
  for (const UINT32 word : {1U, 2U, 4U, 8U, 16U, 3U, 20U, 0U, 32U}) {
    UINT32 stored = ~word;
    const HRESULT result = library.MakeHost(word)->GetAlertTrigger(&stored);
    const std::string of_word = "of the word " + std::to_string(word) + " ";
    if (FAILED(result)) return Broken(of_word + "it answers " + ResultText(result));
    if (stored != word) return Broken(of_word + "it stores " + std::to_string(stored));
  }
  return Kept();
}

Seen TryNoEvent(const HostLibrary& library) {
  UINT32 stored = 0;
  const HRESULT result = library.MakeHost(std::nullopt)->GetAlertTrigger(&stored);
  return FAILED(result) ? Kept() : Broken("it answers " + ResultText(result));
}

using Attempt = Seen (*)(const HostLibrary& library);

Seen Outcome(Attempt attempt, const HostLibrary& library) {
  try {
    return attempt(library);
  } catch (const Fault& fault) {
    return Broken(fault.what());
  } catch (const NoObject& reason) {
    return NotTried(reason.what());
  } catch (...) {
    // The host's. It ends the process elsewhere: programs for 32 bits cannot catch what another
    // module throws.
    TerminateProcess(GetCurrentProcess(), kExceptionOfGcc);
    throw;
  }
}

// What a worker apartment sees, and hands to the thread that waits for it.
struct Worker {
  const HostLibrary& library;
  Seen seen{};
};

// Stops at the first that is not kept. Whether the log can be read does not depend on the
// apartment.
DWORD WINAPI RunWorker(void* parameter) {
  auto& worker = *static_cast<Worker*>(parameter);
  CoInitializeEx(nullptr, COINIT_APARTMENTTHREADED);
  for (const Attempt attempt : {TryWords, TryLogText, TryEvent, TryNoEvent}) {
    worker.seen = Outcome(attempt, worker.library);
    if (worker.seen.state != CheckState::kKept) break;
  }
  CoUninitialize();
  return 0;
}

Seen TryWorker(const HostLibrary& library) {
  Worker worker{library};
  const Handle thread(CreateThread(nullptr, 0, RunWorker, &worker, 0, nullptr));
  if (!thread) return NotTried("there is no further thread");
  WaitForSingleObject(thread.get(), INFINITE);
  return worker.seen;
}

Seen TryEnd(const HostLibrary& library) {
  IUnknown* const object = library.Make(kAlertItemDown);
  if (!CountsReferences(object)) return NotTried("it does not count references");
  const ULONG left = object->Release();
  return left == 0 ? Kept()
                   : Broken("MakeNotifierHost gives one, and behind its Release there are " +
                            std::to_string(left));
}

struct NamedAttempt {
  std::string_view check;
  Attempt attempt;
};

constexpr std::array kAttempts = {NamedAttempt{"interface", TryInterface},
                                  NamedAttempt{"identity", TryIdentity},
                                  NamedAttempt{"unknown interface", TryUnknownInterface},
                                  NamedAttempt{"references", TryReferences},
                                  NamedAttempt{"texts", TryTexts},
                                  NamedAttempt{"words", TryWords},
                                  NamedAttempt{"old text", TryOldText},
                                  NamedAttempt{"log text", TryLogText},
                                  NamedAttempt{"log", TryLog},
                                  NamedAttempt{"event", TryEvent},
                                  NamedAttempt{"no event", TryNoEvent},
                                  NamedAttempt{"worker", TryWorker},
                                  NamedAttempt{"end", TryEnd}};
static_assert(std::ranges::equal(kAttempts, kConformanceChecks, {}, &NamedAttempt::check,
                                 &ConformanceCheck::name));

void Write(HANDLE pipe, const std::string& line) {
  DWORD written = 0;
  WriteFile(pipe, line.data(), static_cast<DWORD>(line.size()), &written, nullptr);
}

// Ends the process at once, without the system's window and without a debugger.
LONG WINAPI EndProcess(EXCEPTION_POINTERS* exception) {
  TerminateProcess(GetCurrentProcess(), exception->ExceptionRecord->ExceptionCode);
  return EXCEPTION_EXECUTE_HANDLER;
}

}  // namespace

std::wstring TrialCommandLine(const TrialRequest& request) {
  return L"notifyhost " + FromUtf8(kTrialArgument) + L" " +
         std::to_wstring(reinterpret_cast<std::uintptr_t>(request.lines)) + L" \"" +
         request.library + L"\"";
}

std::optional<TrialRequest> ReadTrialRequest(const std::vector<std::string>& arguments) {
  if (arguments.size() != 3 || arguments[0] != kTrialArgument) return std::nullopt;
  std::uintptr_t handle = 0;
  std::from_chars(arguments[1].data(), arguments[1].data() + arguments[1].size(), handle);
  return TrialRequest{reinterpret_cast<HANDLE>(handle), FromUtf8(arguments[2])};
}

ExitCode RunTrial(const TrialRequest& request) {
  SetUnhandledExceptionFilter(EndProcess);
  try {
    const HostLibrary library(request.library);
    for (std::size_t check = 0; check < kConformanceChecks.size(); ++check) {
      Write(request.lines, BeginLine(kConformanceChecks.at(check)));
      const Seen seen = Outcome(kAttempts.at(check).attempt, library);
      Write(request.lines, EndLine(seen.state, seen.words));
    }
  } catch (const NoObject& reason) {
    Write(request.lines, "!" + std::string(reason.what()));
    return ExitCode::kFailed;
  }
  return ExitCode::kDone;
}

}  // namespace brantel::host
