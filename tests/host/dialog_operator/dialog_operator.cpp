// Does what an operator does at a dialog of another program: waits for at most a minute for the
// dialog with a title, fills its controls in, and presses a button.
//
//   dialog_operator TITLE BUTTON [CONTROL TEXT]...
//
// Buttons and controls are given by their numbers. Exit codes: 0 done, 1 there is no such dialog or
// control or the dialog does not take notice, 2 wrong usage.
#include <windows.h>

#include <cstdlib>

namespace {

constexpr DWORD kPollMilliseconds = 10;
constexpr DWORD kWaitMilliseconds = 60000;
constexpr DWORD kNoticeMilliseconds = 2000;

HWND AwaitDialog(const char* title) {
  for (DWORD waited = 0; waited < kWaitMilliseconds; waited += kPollMilliseconds) {
    HWND const dialog = FindWindowA("#32770", title);
    // It is shown when it is filled.
    if (dialog != nullptr && IsWindowVisible(dialog) != FALSE) return dialog;
    Sleep(kPollMilliseconds);
  }
  return nullptr;
}

bool SetText(HWND dialog, int control, const char* text) {
  HWND const window = GetDlgItem(dialog, control);
  return window != nullptr && SendMessageA(window, WM_SETTEXT, 0, LPARAM(text)) != FALSE;
}

// It is gone, or has opened a window of its own.
bool TakesNotice(HWND dialog) {
  for (DWORD waited = 0; waited < kNoticeMilliseconds; waited += kPollMilliseconds) {
    if (IsWindowVisible(dialog) == FALSE || IsWindowEnabled(dialog) == FALSE) return true;
    Sleep(kPollMilliseconds);
  }
  return false;
}

// A click is lost when another window takes the mouse meanwhile.
bool Press(HWND dialog, int button) {
  HWND const window = GetDlgItem(dialog, button);
  if (window == nullptr) return false;
  for (DWORD waited = 0; waited < kWaitMilliseconds; waited += kNoticeMilliseconds) {
    // Posted, for what the dialog does then may take longer than this program stays.
    PostMessageA(window, BM_CLICK, 0, 0);
    if (TakesNotice(dialog)) return true;
  }
  return false;
}

int NumberOf(const char* text) {
  return static_cast<int>(std::strtol(text, nullptr, 10));
}

}  // namespace

int main(int argument_count, char** arguments) {
  if (argument_count < 3 || argument_count % 2 == 0) return 2;
  HWND const dialog = AwaitDialog(arguments[1]);
  if (dialog == nullptr) return 1;
  for (int i = 3; i < argument_count; i += 2) {
    if (!SetText(dialog, NumberOf(arguments[i]), arguments[i + 1])) return 1;
  }
  return Press(dialog, NumberOf(arguments[2])) ? 0 : 1;
}
