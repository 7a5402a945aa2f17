#include "win_popup/worker_threads_win32.h"

#include <windows.h>

#include <memory>
#include <utility>

#include "system/exception_guard.h"
#include "system/windows/handle_win32.h"
#include "system/windows/module_instance_win32.h"

namespace brantel {
namespace {

// What a thread starts with. Its reference is the loader's own, beside the host's: the module's
// lock count, which DllCanUnloadNow answers by, could only be given back by code that still has to
// return to the system, and hosts may unload without asking. So the count goes on telling of
// objects alone.
struct ThreadStart {
  std::function<void()> work;
  HMODULE module = nullptr;
};

// Null when the module is just being unloaded.
HMODULE ReferToModule() {
  HMODULE module = nullptr;
  GetModuleHandleExW(GET_MODULE_HANDLE_EX_FLAG_FROM_ADDRESS,
                     reinterpret_cast<const wchar_t*>(ModuleInstance()), &module);
  return module;
}

void DoWork(const std::unique_ptr<ThreadStart>& start) {
  static_cast<void>(GuardExceptions([&] {
    start->work();
    return kOk;
  }));
}

DWORD WINAPI RunThread(void* parameter) noexcept {
  std::unique_ptr<ThreadStart> start(static_cast<ThreadStart*>(parameter));
  HMODULE const module = start->module;
  DoWork(start);
  start.reset();
  // Gives the reference back and ends the thread without returning to code that may be gone then.
  FreeLibraryAndExitThread(module, 0);
}

}  // namespace

void SystemWorkerThreads::Start(std::function<void()> work) {
  auto start = std::make_unique<ThreadStart>();
  start->work = std::move(work);
  start->module = ReferToModule();
  if (start->module == nullptr) return;
  const Handle thread(CreateThread(nullptr, 0, RunThread, start.get(), 0, nullptr));
  if (thread) {
    static_cast<void>(start.release());  // the thread's now
  } else {
    FreeLibrary(start->module);
  }
}

}  // namespace brantel
