#include "telephone/message_pump_win32.h"

#include <windows.h>

#include <optional>

namespace brantel {
namespace {

// How long it sleeps at the most, in milliseconds. Nothing that is told of takes so long: it is for
// what another thread has changed without a word.
constexpr DWORD kLongestSleep = 100;

// Handles the next message, if there is one. Those that other threads have sent are handled in
// either case. The number with which the thread was told to quit, when that was the message, goes
// to `exit_code`.
bool HandleMessage(std::optional<int>& exit_code) {
  MSG message;
  if (PeekMessageA(&message, nullptr, 0, 0, PM_REMOVE) == FALSE) return false;
  if (message.message == WM_QUIT) {
    exit_code = static_cast<int>(message.wParam);
  } else {
    TranslateMessage(&message);
    DispatchMessageA(&message);
  }
  return true;
}

// Also at once for messages that came before: somebody may have looked at the queue and left them
// there, which an ordinary wait takes for old news.
void AwaitInput(EventHandle event) {
  const auto handle = reinterpret_cast<HANDLE>(event);
  MsgWaitForMultipleObjectsEx(event == kNoEvent ? 0 : 1, &handle, kLongestSleep, QS_ALLINPUT,
                              MWMO_INPUTAVAILABLE);
}

}  // namespace

void ThreadMessagePump::PumpUntil(const std::function<bool()>& is_over, EventHandle event) {
  // For the host's own message loop, which the thread goes back to.
  std::optional<int> exit_code;
  while (!is_over()) {
    if (HandleMessage(exit_code)) continue;
    if (is_over()) break;  // by a message that was sent
    AwaitInput(event);
  }
  if (exit_code) PostQuitMessage(*exit_code);
}

}  // namespace brantel
