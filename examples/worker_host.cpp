// worker_host SECONDS CLASS FILE...: sends an alert for each of the instance files of a class on a
// worker thread with an apartment of its own, while the main thread goes on, and waits no longer
// than so many seconds for each. 0: all went out; 1: one failed; 3: one did not end in time.
//
// Send cannot be recalled. A host that has to go on leaves the thread that is in it alone, sends
// nothing more on what that uses, and is rid of it when its process ends.
#include <brantel/notifier_contract.h>
#include <shellapi.h>

#include <cstdio>
#include <cwchar>
#include <string>

namespace {

class Callback final : public brantel::INotifierHost {
 public:
  ULONG STDMETHODCALLTYPE AddRef() override { return 2; }
  ULONG STDMETHODCALLTYPE Release() override { return 1; }
  HRESULT STDMETHODCALLTYPE QueryInterface(REFIID iid, void** object) override {
    const bool is_known = iid == brantel::IID_INotifierHost || iid == IID_IUnknown;
    *object = is_known ? this : nullptr;
    return is_known ? S_OK : E_NOINTERFACE;
  }
  HRESULT STDMETHODCALLTYPE ExpandMessage(BSTR*) override { return S_OK; }
  // On the worker thread, as all callbacks.
  HRESULT STDMETHODCALLTYPE LogMessage(UINT32, BSTR text) override {
    std::printf("%ls", text);
    std::fflush(stdout);
    return S_OK;
  }
  HRESULT STDMETHODCALLTYPE GetAlertTrigger(UINT32* flags) override {
    *flags = brantel::kAlertItemDown;
    return S_OK;
  }
};

// What the main thread hands to the worker, and what comes back.
struct Job {
  std::wstring class_name;
  std::wstring file;
  HRESULT result = E_PENDING;
  HANDLE is_given = CreateEventW(nullptr, FALSE, FALSE, nullptr);
  HANDLE is_done = CreateEventW(nullptr, FALSE, FALSE, nullptr);
};

HRESULT SendAlert(const Job& job) {
  CLSID clsid;
  HRESULT result = CLSIDFromProgID((L"Brantel_Notifications." + job.class_name).c_str(), &clsid);
  if (FAILED(result)) return result;
  brantel::INotifier* notifier = nullptr;
  result = CoCreateInstance(clsid, nullptr, CLSCTX_INPROC_SERVER, brantel::IID_INotifier,
                            reinterpret_cast<void**>(&notifier));
  if (FAILED(result)) return result;
  Callback callback;
  result = notifier->Initialize(&callback);
  if (SUCCEEDED(result)) {
    const BSTR path = SysAllocString(job.file.c_str());
    result = notifier->Send(path);
    SysFreeString(path);
    notifier->Shutdown();
  }
  notifier->Release();
  return result;
}

// Objects belong to the thread that has made them, so the worker makes, uses and releases them.
DWORD WINAPI Work(void* parameter) {
  auto& job = *static_cast<Job*>(parameter);
  CoInitializeEx(nullptr, COINIT_APARTMENTTHREADED);
  while (WaitForSingleObject(job.is_given, INFINITE) == WAIT_OBJECT_0 && !job.file.empty()) {
    job.result = SendAlert(job);
    SetEvent(job.is_done);
  }
  CoUninitialize();
  return 0;
}

// Gives the worker the next file, or none as a sign to end.
void Give(Job& job, const std::wstring& file) {
  job.file = file;
  SetEvent(job.is_given);
}

}  // namespace

int main() {
  int count = 0;
  wchar_t** const words = CommandLineToArgvW(GetCommandLineW(), &count);
  const unsigned long seconds = count < 4 ? 0 : std::wcstoul(words[1], nullptr, 10);
  if (seconds == 0) return 2;
  static Job job;
  job.class_name = words[2];
  const HANDLE worker = CreateThread(nullptr, 0, Work, &job, 0, nullptr);
  int exit_code = 0;
  for (int i = 3; i < count; ++i) {
    Give(job, words[i]);
    if (WaitForSingleObject(job.is_done, seconds * 1000) != WAIT_OBJECT_0) {
      std::printf("\n%ls: no end within %lu seconds\n", words[i], seconds);
      std::fflush(stdout);
      TerminateProcess(GetCurrentProcess(), 3);
    }
    std::printf("\n%ls: 0x%08lX\n", words[i], job.result);
    if (FAILED(job.result)) exit_code = 1;
  }
  Give(job, L"");
  WaitForSingleObject(worker, INFINITE);
  return exit_code;
}
