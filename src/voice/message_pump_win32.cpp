#include "voice/message_pump_win32.h"

#include <windows.h>

#include <optional>

namespace brantel {

void ThreadMessagePump::PumpUntil(const std::function<bool()>& is_over) {
  // For the host's own message loop, which the thread goes back to.
  std::optional<int> exit_code;
  while (!is_over()) {
    MSG message;
    if (PeekMessageA(&message, nullptr, 0, 0, PM_REMOVE) == FALSE) continue;
    if (message.message == WM_QUIT) {
      exit_code = static_cast<int>(message.wParam);
      continue;
    }
    TranslateMessage(&message);
    DispatchMessageA(&message);
  }
  if (exit_code) PostQuitMessage(*exit_code);
}

}  // namespace brantel
