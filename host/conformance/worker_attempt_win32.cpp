#include "host/conformance/worker_attempt_win32.h"

#include <windows.h>
#include <objbase.h>

#include "host/conformance/event_attempts_win32.h"
#include "host/conformance/log_attempts_win32.h"
#include "host/conformance/text_attempts_win32.h"
#include "system/windows/handle_win32.h"

namespace brantel::host {
namespace {

// What a worker apartment sees, and hands to the thread that waits for it.
struct Worker {
  const TriedLibrary& library;
  Seen seen{};
};

// Stops at the first that is not kept. Whether the log can be read does not depend on the
// apartment.
DWORD WINAPI RunWorker(void* parameter) {
  auto& worker = *static_cast<Worker*>(parameter);
  CoInitializeEx(nullptr, COINIT_APARTMENTTHREADED);
  for (const Attempt attempt : {TryWords, TryLogText, TryEvent, TryNoEvent}) {
    worker.seen = OutcomeOf(attempt, worker.library);
    if (worker.seen.state != CheckState::kKept) break;
  }
  CoUninitialize();
  return 0;
}

}  // namespace

Seen TryWorker(const TriedLibrary& library) {
  Worker worker{library};
  const Handle thread(CreateThread(nullptr, 0, RunWorker, &worker, 0, nullptr));
  if (!thread) return NotTried("there is no further thread");
  WaitForSingleObject(thread.get(), INFINITE);
  return worker.seen;
}

}  // namespace brantel::host
