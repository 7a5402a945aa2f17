#include "host/system/interruption_win32.h"

namespace brantel::host {
namespace {

// The system calls its handler in a thread of its own, without any argument of ours.
HANDLE interrupted = nullptr;

BOOL WINAPI NoteInterruption(DWORD kind) {
  SetEvent(interrupted);
  // When the handler of anything but a key returns, the process ends at once.
  if (kind != CTRL_C_EVENT && kind != CTRL_BREAK_EVENT) Sleep(INFINITE);
  return TRUE;
}

BOOL WINAPI IgnoreInterruption(DWORD) {
  return TRUE;
}

}  // namespace

Interruption::Interruption() {
  interrupted = CreateEventW(nullptr, TRUE, FALSE, nullptr);
  SetConsoleCtrlHandler(NoteInterruption, TRUE);
}

Interruption::~Interruption() {
  SetConsoleCtrlHandler(NoteInterruption, FALSE);
  CloseHandle(interrupted);
}

HANDLE Interruption::event() const {
  return interrupted;
}

void LeaveInterruptionsToOthers() {
  SetConsoleCtrlHandler(IgnoreInterruption, TRUE);
}

}  // namespace brantel::host
