#include "host/watch/worker_threads_win32.h"

#include <windows.h>

#include <memory>
#include <utility>

#include "host/outcome/command_failure.h"
#include "host/outcome/system_error_text_win32.h"
#include "system/exception_guard.h"

namespace brantel::host {
namespace {

DWORD WINAPI CallFunction(void* context) {
  const std::unique_ptr<std::function<void()>> function(
      static_cast<std::function<void()>*>(context));
  GuardExceptions([&] {
    (*function)();
    return kOk;
  });
  return 0;
}

}  // namespace

void CallInThread(std::function<void()> function) {
  auto context = std::make_unique<std::function<void()>>(std::move(function));
  // Each in a thread of its own: one that hangs keeps no other waiting.
  if (QueueUserWorkItem(CallFunction, context.get(), WT_EXECUTELONGFUNCTION) == FALSE)
    throw CommandFailure(ExitCode::kFailed,
                         "no thread can be started: " + SystemErrorText(GetLastError()));
  (void)context.release();
}

}  // namespace brantel::host
