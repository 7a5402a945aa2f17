#pragma once

#include <windows.h>

#include "brantel/notifier_contract.h"
#include "system/windows/bstr_win32.h"

namespace brantel {

// A host with an event that needs nothing filled in, and a log that nobody reads. It lives where it
// is declared.
class ModuleHost final : public INotifierHost {
 public:
  ModuleHost() = default;
  ModuleHost(const ModuleHost&) = delete;
  ModuleHost& operator=(const ModuleHost&) = delete;
  ~ModuleHost() = default;

  HRESULT STDMETHODCALLTYPE QueryInterface(REFIID iid, void** object) override {
    if (IsEqualIID(iid, IID_IUnknown) == FALSE && IsEqualIID(iid, IID_INotifierHost) == FALSE) {
      *object = nullptr;
      return E_NOINTERFACE;
    }
    *object = static_cast<INotifierHost*>(this);
    return S_OK;
  }
  ULONG STDMETHODCALLTYPE AddRef() override { return 2; }
  ULONG STDMETHODCALLTYPE Release() override { return 1; }
  HRESULT STDMETHODCALLTYPE ExpandMessage(BSTR* text) override {
    Bstr expanded(Bstr::ViewOf(*text));
    SysFreeString(*text);
    *text = expanded.release();
    return S_OK;
  }
  HRESULT STDMETHODCALLTYPE LogMessage(UINT32, BSTR) override { return S_OK; }
  HRESULT STDMETHODCALLTYPE GetAlertTrigger(UINT32* flags) override {
    *flags = kAlertItemDown;
    return S_OK;
  }
};

}  // namespace brantel
