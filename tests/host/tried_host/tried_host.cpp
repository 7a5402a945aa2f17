// A host's callback object for the tests of "notifyhost conformance". It keeps the contract, but
// for the fault that the environment variable HOST_FAULT names.
#include <windows.h>
#include <oleauto.h>

#include <cstdlib>
#include <optional>
#include <stdexcept>
#include <string>

#include "brantel/host_conformance.h"
#include "brantel/notifier_contract.h"
#include "system/windows/bstr_win32.h"

namespace brantel {
namespace {

// As a program that Microsoft's compiler has made throws it.
constexpr DWORD kExceptionOfOthers = 0xE06D7363;

int* volatile nowhere = nullptr;

bool HasFault(const wchar_t* fault) {
  const wchar_t* const chosen = _wgetenv(L"HOST_FAULT");
  return chosen != nullptr && std::wstring(chosen) == fault;
}

class TriedHost final : public INotifierHost {
 public:
  explicit TriedHost(std::optional<UINT32> event)
      : event_(event), references_(HasFault(L"one reference too many") ? 2 : 1) {}
  TriedHost(const TriedHost&) = delete;
  TriedHost& operator=(const TriedHost&) = delete;
  ~TriedHost() = default;

  HRESULT STDMETHODCALLTYPE QueryInterface(REFIID iid, void** object) override {
    const bool is_host = iid == IID_INotifierHost && !HasFault(L"no interface");
    if (is_host || iid == IID_IUnknown || HasFault(L"any interface")) {
      *object = HasFault(L"two identities") && iid == IID_IUnknown ? new TriedHost(event_) : this;
      if (!HasFault(L"no reference for a pointer")) AddRef();
      return S_OK;
    }
    if (!HasFault(L"pointer left alone")) *object = nullptr;
    return E_NOINTERFACE;
  }
  ULONG STDMETHODCALLTYPE AddRef() override {
    if (HasFault(L"without counting")) return 2;
    return static_cast<ULONG>(InterlockedIncrement(&references_));
  }
  ULONG STDMETHODCALLTYPE Release() override {
    if (HasFault(L"without counting")) return 1;
    const LONG left = InterlockedDecrement(&references_);
    if (left == 0) delete this;
    return static_cast<ULONG>(left);
  }

  HRESULT STDMETHODCALLTYPE ExpandMessage(BSTR* text) override {
    if (HasFault(L"exception")) RaiseException(kExceptionOfOthers, 0, 0, nullptr);
    if (HasFault(L"thrown")) throw std::runtime_error("nobody catches this");
    if (HasFault(L"crash")) *nowhere = 0;
    if (HasFault(L"no end")) Sleep(INFINITE);
    if (HasFault(L"end of the process")) std::_Exit(77);
    if (HasFault(L"other apartment") && GetCurrentThreadId() != thread_of_first_)
      return RPC_E_WRONG_THREAD;
    std::wstring words(Bstr::ViewOf(*text));
    if (HasFault(L"words lost")) words.clear();
    if (HasFault(L"no BSTR")) {
      static std::wstring plain;
      plain = words.empty() ? L"x" : words;
      *text = plain.data();
      return S_OK;
    }
    if (HasFault(L"freed text left") && !words.empty()) {
      SysFreeString(*text);
      return E_OUTOFMEMORY;
    }
    for (std::size_t at = 0; (at = words.find(L"%n", at)) != std::wstring::npos;)
      words.replace(at, 2, L"router7");
    if (!HasFault(L"old text kept")) SysFreeString(*text);
    *text = Bstr(words).release();
    return S_OK;
  }
  HRESULT STDMETHODCALLTYPE LogMessage(UINT32, BSTR text) override {
    std::wstring words(Bstr::ViewOf(text));
    if (HasFault(L"log text freed")) SysFreeString(text);
    if (HasFault(L"log text changed") && !words.empty()) *text = L'X';
    if (HasFault(L"line break added")) words += L"\r\n";
    if (HasFault(L"line breaks dropped")) std::erase(words, L'\r');
    log_ += words;
    return S_OK;
  }
  HRESULT STDMETHODCALLTYPE GetAlertTrigger(UINT32* flags) override {
    if (!event_ && !HasFault(L"event of nothing")) return E_FAIL;
    *flags = event_.value_or(0) & (HasFault(L"traps forgotten") ? 15U : ~0U);
    return S_OK;
  }

  [[nodiscard]] const std::wstring& log() const { return log_; }

 private:
  std::optional<UINT32> event_;
  LONG references_;
  std::wstring log_;
  static inline const DWORD thread_of_first_ = GetCurrentThreadId();
};

}  // namespace
}  // namespace brantel

HRESULT MakeNotifierHost(const UINT32* event, IUnknown** host) {
  if (brantel::HasFault(L"no object")) return E_OUTOFMEMORY;
  *host = brantel::HasFault(L"null object")
              ? nullptr
              : new brantel::TriedHost(event == nullptr ? std::nullopt : std::optional(*event));
  return S_OK;
}

#ifndef WITHOUT_LOG
HRESULT ReadNotifierLog(IUnknown* host, BSTR* log) {
  // NOLINTNEXTLINE(*-static-cast-downcast): hosts know their own object
  *log = brantel::Bstr(static_cast<brantel::TriedHost*>(host)->log()).release();
  return S_OK;
}
#endif
