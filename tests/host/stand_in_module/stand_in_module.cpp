// A module for the tests of the host: it takes the place of the real one, behaves in ways in which
// the real one cannot be made to behave, and tells what the host did.
//
// Send, by class:
//   SMTPMail       fails with 0x80140001
//   Sound          logs its argument in brackets and answers 2
//   WinPopup       logs a talk with a modem, with an open line at its end
//   LaunchProgram  logs what the host makes of "%n|%C|%%|%", and of a null text
//   Beeper         logs the trigger word, or the result when the host has none
//   Pager          lets the module be used for good, so that it must not be unloaded
//   Voice          logs how the host answers calls that are wrong
//
// AddInstance and EditInstance log their arguments in brackets and the trigger word, with an open
// line at the end, and give the name " 2" at its end. SMTPMail cancels instead, and Voice has no
// dialogs.
//
// The calls are written, one a line, to the file that the environment variable STAND_IN_TRACE
// names. The call that STAND_IN_FAILS names fails with E_ACCESSDENIED. Send returns when the file
// that STAND_IN_WAIT_FOR names is there; where STAND_IN_DIES has a value, it ends its process
// instead.
#include <windows.h>
#include <oleauto.h>

#include <array>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <string>
#include <string_view>

#include "brantel/notifier_contract.h"
#include "system/windows/bstr_win32.h"
#include "system/windows/com_pointer_win32.h"

namespace brantel {
namespace {

LONG lock_count = 0;

std::wstring Setting(const wchar_t* name) {
  const wchar_t* const value = _wgetenv(name);
  return value == nullptr ? L"" : value;
}

void Trace(const std::string& line) {
  if (FILE* const file = _wfopen(Setting(L"STAND_IN_TRACE").c_str(), L"ab")) {
    std::fputs((line + "\n").c_str(), file);
    std::fclose(file);
  }
}

HRESULT Called(const char* call) {
  Trace(call);
  const std::wstring failing = Setting(L"STAND_IN_FAILS");
  return failing == std::wstring(call, call + std::strlen(call)) ? E_ACCESSDENIED : S_OK;
}

void WaitForFile(const std::wstring& file) {
  constexpr DWORD kPollMilliseconds = 10;
  constexpr DWORD kWaitMilliseconds = 60000;
  for (DWORD waited = 0; waited < kWaitMilliseconds; waited += kPollMilliseconds) {
    if (file.empty() || GetFileAttributesW(file.c_str()) != INVALID_FILE_ATTRIBUTES) return;
    Sleep(kPollMilliseconds);
  }
}

std::string Hex(HRESULT result) {
  std::array<char, 16> text{};
  std::snprintf(text.data(), text.size(), "0x%08lX", static_cast<unsigned long>(result));
  return text.data();
}

// What a class does with one alert.
using SendFunction = HRESULT (*)(INotifierHost& host, std::wstring_view instance);

void Log(INotifierHost& host, std::wstring_view text) {
  host.LogMessage(1, Bstr(text).get());
}

void Log(INotifierHost& host, const std::string& text) {
  Log(host, std::wstring(text.begin(), text.end()));
}

HRESULT FailWithoutName(INotifierHost&, std::wstring_view) {
  return static_cast<HRESULT>(0x80140001);
}

HRESULT AnswerTwo(INotifierHost& host, std::wstring_view instance) {
  Log(host, L"[" + std::wstring(instance) + L"]\n");
  return 2;
}

HRESULT LogModemTalk(INotifierHost& host, std::wstring_view) {
  for (const std::wstring_view text :
       {L"AT&F\r", L"\r\nOK\r\n", L"ID=\x1B[2J", L"\r", L"\n", L"\x06\033d\x15 caf\xE9 \x260E"}) {
    Log(host, text);
  }
  return S_OK;
}

HRESULT LogExpansions(INotifierHost& host, std::wstring_view) {
  Bstr text(L"%n|%C|%%|%");
  Bstr none;
  const HRESULT expanded = host.ExpandMessage(text.in_out());
  const HRESULT none_expanded = host.ExpandMessage(none.in_out());
  Log(host, text.view());
  Log(host, L"\n[" + std::wstring(none.view()) + L"]\n");
  return FAILED(expanded) ? expanded : none_expanded;
}

HRESULT LogTrigger(INotifierHost& host, std::wstring_view) {
  UINT32 word = 0;
  const HRESULT result = host.GetAlertTrigger(&word);
  Log(host, FAILED(result) ? "no trigger: " + Hex(result) + "\n"
                           : "trigger " + Hex(static_cast<HRESULT>(word)) + "\n");
  return S_OK;
}

HRESULT StayInUse(INotifierHost&, std::wstring_view) {
  InterlockedIncrement(&lock_count);
  return S_OK;
}

HRESULT LogAnswersToWrongCalls(INotifierHost& host, std::wstring_view) {
  ComPointer<IUnknown> other;
  Log(host, "other interface: " + Hex(host.QueryInterface(IID_INotifier, other.put_void())) + "\n");
  Log(host, "null interface: " + Hex(host.QueryInterface(IID_IUnknown, nullptr)) + "\n");
  Log(host, "null text: " + Hex(host.ExpandMessage(nullptr)) + "\n");
  Log(host, "null trigger: " + Hex(host.GetAlertTrigger(nullptr)) + "\n");
  Log(host, "null log: " + Hex(host.LogMessage(1, nullptr)) + "\n");
  return S_OK;
}

enum class Dialogs { kNone, kCancelled, kSaved };

struct ClassRow {
  CLSID clsid{};
  SendFunction send = nullptr;
  Dialogs dialogs = Dialogs::kSaved;
};

constexpr std::array kClasses = {
    ClassRow{{0x4D03ADA6, 0x067C, 0x79C7, {0xB3, 0xCD, 0xB7, 0xD9, 0xC4, 0x29, 0x3B, 0xF5}},
             FailWithoutName,
             Dialogs::kCancelled},
    ClassRow{{0xA93D5106, 0xD415, 0x9AE1, {0x29, 0x56, 0x2D, 0x68, 0x5A, 0x03, 0xA6, 0x7B}},
             AnswerTwo},
    ClassRow{{0xB28A7D4D, 0xB389, 0xC787, {0xCC, 0xC0, 0xA0, 0xF7, 0x73, 0xC8, 0xFC, 0x73}},
             LogModemTalk},
    ClassRow{{0x313E5016, 0xEB2E, 0xF2DD, {0xBD, 0xB6, 0x18, 0x4E, 0xFE, 0x00, 0xA5, 0xD3}},
             LogExpansions},
    ClassRow{{0xE0F08BCF, 0x0BD9, 0x3D64, {0x84, 0x2A, 0x2F, 0xCE, 0xAE, 0x91, 0xF1, 0x7E}},
             LogTrigger},
    ClassRow{{0x2669D42E, 0x142D, 0x8B34, {0xEA, 0xC1, 0x28, 0xB0, 0x7E, 0xB3, 0xEA, 0xBA}},
             StayInUse},
    ClassRow{{0xDEE8A963, 0x837B, 0xD33C, {0xC7, 0x5D, 0xB6, 0x37, 0xB7, 0xCC, 0xFC, 0xA2}},
             LogAnswersToWrongCalls,
             Dialogs::kNone},
};

// Counts its references and tells of its end.
template <typename Interface, typename... OtherInterfaces>
class Counted : public Interface, public OtherInterfaces... {
 public:
  explicit Counted(const char* name) : name_(name) { InterlockedIncrement(&lock_count); }
  Counted(const Counted&) = delete;
  Counted& operator=(const Counted&) = delete;

  ULONG STDMETHODCALLTYPE AddRef() noexcept override {
    return static_cast<ULONG>(InterlockedIncrement(&references_));
  }
  ULONG STDMETHODCALLTYPE Release() noexcept override {
    const LONG left = InterlockedDecrement(&references_);
    if (left == 0) delete this;
    return static_cast<ULONG>(left);
  }

 protected:
  virtual ~Counted() {
    Trace(std::string(name_) + " released");
    InterlockedDecrement(&lock_count);
  }

  HRESULT Offer(REFIID iid, REFIID own_iid, void** object) {
    if (iid != IID_IUnknown && iid != own_iid) return E_NOINTERFACE;
    *object = static_cast<Interface*>(this);
    AddRef();
    return S_OK;
  }

 private:
  const char* name_;
  volatile LONG references_ = 1;
};

class StandInNotifier final : public Counted<INotifier, INotifierConfig> {
 public:
  explicit StandInNotifier(const ClassRow& row) : Counted("notifier"), row_(row) {}

  HRESULT STDMETHODCALLTYPE QueryInterface(REFIID iid, void** object) noexcept override {
    if (iid != IID_INotifierConfig) return Offer(iid, IID_INotifier, object);
    if (row_.dialogs == Dialogs::kNone) return E_NOINTERFACE;
    *object = static_cast<INotifierConfig*>(this);
    AddRef();
    return S_OK;
  }

  HRESULT STDMETHODCALLTYPE Initialize(IUnknown* host) noexcept override {
    const HRESULT result = Called("Initialize");
    if (FAILED(result)) return result;
    return host->QueryInterface(IID_INotifierHost, host_.put_void());
  }

  HRESULT STDMETHODCALLTYPE Shutdown() noexcept override {
    Called("Shutdown");
    host_->AddRef();
    const ULONG held_by_us_and_host = host_->Release();
    host_ = {};
    Trace("references to the host: " + std::to_string(held_by_us_and_host - 1));
    return S_OK;
  }

  HRESULT STDMETHODCALLTYPE Send(BSTR instance) noexcept override {
    Called("Send");
    const HRESULT result = row_.send(*host_.get(), Bstr::ViewOf(instance));
    if (!Setting(L"STAND_IN_DIES").empty()) TerminateProcess(GetCurrentProcess(), 3);
    WaitForFile(Setting(L"STAND_IN_WAIT_FOR"));
    return result;
  }

  HRESULT STDMETHODCALLTYPE AddInstance(BSTR directory, BSTR* name) noexcept override {
    return Configure("AddInstance", directory, name);
  }

  HRESULT STDMETHODCALLTYPE EditInstance(BSTR directory, BSTR* name) noexcept override {
    return Configure("EditInstance", directory, name);
  }

  HRESULT STDMETHODCALLTYPE GetImageResource(HMODULE*, UINT32*) noexcept override {
    return E_NOTIMPL;
  }

 private:
  HRESULT Configure(const char* call, BSTR directory, BSTR* name) {
    const HRESULT result = Called(call);
    const std::wstring old_name(Bstr::ViewOf(*name));
    if (host_) {
      Log(*host_.get(), L"[" + std::wstring(Bstr::ViewOf(directory)) + L"][" + old_name + L"]\n");
      LogTrigger(*host_.get(), {});
      Log(*host_.get(), L"open line");
    }
    if (FAILED(result)) return result;
    if (row_.dialogs == Dialogs::kCancelled) return E_FAIL;
    SysFreeString(*name);
    *name = Bstr(old_name + L" 2").release();
    return S_OK;
  }

  const ClassRow& row_;
  ComPointer<INotifierHost> host_;
};

class StandInFactory final : public Counted<IClassFactory> {
 public:
  explicit StandInFactory(const ClassRow& row) : Counted("factory"), row_(row) {}

  HRESULT STDMETHODCALLTYPE QueryInterface(REFIID iid, void** object) noexcept override {
    return Offer(iid, IID_IClassFactory, object);
  }

  HRESULT STDMETHODCALLTYPE CreateInstance(IUnknown*, REFIID iid, void** object) noexcept override {
    const HRESULT result = Called("CreateInstance");
    if (FAILED(result)) return result;
    return ComPointer<INotifier>::Adopt(new StandInNotifier(row_))->QueryInterface(iid, object);
  }

  HRESULT STDMETHODCALLTYPE LockServer(BOOL) noexcept override { return S_OK; }

 private:
  const ClassRow& row_;
};

}  // namespace
}  // namespace brantel

extern "C" BOOL WINAPI DllMain(HINSTANCE, DWORD reason, void* process_ends) {
  if (reason == DLL_PROCESS_ATTACH) brantel::Trace("loaded");
  if (reason == DLL_PROCESS_DETACH && process_ends == nullptr) brantel::Trace("unloaded");
  return TRUE;
}

STDAPI DllCanUnloadNow() {
  brantel::Called("DllCanUnloadNow");
  return brantel::lock_count == 0 ? S_OK : S_FALSE;
}

STDAPI DllGetClassObject(REFCLSID clsid, REFIID iid, void** object) {
  const HRESULT result = brantel::Called("DllGetClassObject");
  if (FAILED(result)) return result;
  for (const brantel::ClassRow& row : brantel::kClasses) {
    if (row.clsid != clsid) continue;
    return brantel::ComPointer<IClassFactory>::Adopt(new brantel::StandInFactory(row))
        ->QueryInterface(iid, object);
  }
  return CLASS_E_CLASSNOTAVAILABLE;
}

STDAPI DllRegisterServer() {
  return brantel::Called("DllRegisterServer");
}

STDAPI DllUnregisterServer() {
  return brantel::Called("DllUnregisterServer");
}
