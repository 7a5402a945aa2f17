// minimal_host CLASS FILE: sends an alert that a device went down for one instance file, such as
// minimal_host Sound C:\Instances\Siren. Prints the notifier's log. 0: the alert went out.
#include <brantel/notifier_contract.h>
#include <shellapi.h>

#include <cstdio>
#include <string>

namespace {

// What the notifier calls while it sends.
class Callback final : public brantel::INotifierHost {
 public:
  // It lives in main, longer than whoever counts.
  ULONG STDMETHODCALLTYPE AddRef() override { return 2; }
  ULONG STDMETHODCALLTYPE Release() override { return 1; }
  HRESULT STDMETHODCALLTYPE QueryInterface(REFIID iid, void** object) override {
    const bool is_known = iid == brantel::IID_INotifierHost || iid == IID_IUnknown;
    *object = is_known ? this : nullptr;
    return is_known ? S_OK : E_NOINTERFACE;
  }
  // Fills in the name of the device.
  HRESULT STDMETHODCALLTYPE ExpandMessage(BSTR* text) override {
    std::wstring words(*text == nullptr ? L"" : *text);
    for (std::size_t at = 0; (at = words.find(L"%n", at)) != std::wstring::npos;)
      words.replace(at, 2, L"router7");
    return SysReAllocString(text, words.c_str()) != FALSE ? S_OK : E_OUTOFMEMORY;
  }
  HRESULT STDMETHODCALLTYPE LogMessage(UINT32, BSTR text) override {
    std::printf("%ls", text);
    return S_OK;
  }
  HRESULT STDMETHODCALLTYPE GetAlertTrigger(UINT32* flags) override {
    *flags = brantel::kAlertItemDown;
    return S_OK;
  }
};

HRESULT Send(brantel::INotifier* notifier, IUnknown* callback, const wchar_t* file) {
  HRESULT result = notifier->Initialize(callback);
  if (FAILED(result)) return result;
  const BSTR path = SysAllocString(file);
  result = notifier->Send(path);
  SysFreeString(path);
  notifier->Shutdown();
  return result;
}

HRESULT SendAlert(const wchar_t* class_name, const wchar_t* file) {
  CLSID clsid;
  HRESULT result =
      CLSIDFromProgID((std::wstring(L"Brantel_Notifications.") + class_name).c_str(), &clsid);
  if (FAILED(result)) return result;
  brantel::INotifier* notifier = nullptr;
  result = CoCreateInstance(clsid, nullptr, CLSCTX_INPROC_SERVER, brantel::IID_INotifier,
                            reinterpret_cast<void**>(&notifier));
  if (FAILED(result)) return result;
  Callback callback;
  result = Send(notifier, &callback, file);
  notifier->Release();
  return result;
}

}  // namespace

int main() {
  int count = 0;
  wchar_t** const words = CommandLineToArgvW(GetCommandLineW(), &count);
  if (words == nullptr || count != 3) return 2;
  CoInitializeEx(nullptr, COINIT_APARTMENTTHREADED);
  const HRESULT result = SendAlert(words[1], words[2]);
  CoUninitialize();
  std::printf("\n%s: 0x%08lX\n", FAILED(result) ? "Failed" : "Sent", result);
  return FAILED(result) ? 1 : 0;
}
