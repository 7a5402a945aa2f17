#pragma once

#include <windows.h>

#include <vector>

#include "dialog/dialog_tasks.h"
#include "system/windows/critical_section_win32.h"

namespace brantel {

// The tasks of a dialog that is a window. A message tells the window of them; no other thread ever
// sends to it or waits for it, so that its thread need not wait for any either when it closes.
class WindowTasks final : public DialogTasks {
 public:
  // What the window gets when there is something to do.
  static constexpr UINT kMessage = WM_APP;

  explicit WindowTasks(HWND window) noexcept;
  WindowTasks(const WindowTasks&) = delete;
  WindowTasks& operator=(const WindowTasks&) = delete;
  ~WindowTasks() override;

  void Post(std::function<void()> task) override;
  [[nodiscard]] bool IsOpen() override;

  // Does what is to be done. By the window's thread.
  void Do();

  // The window is about to be destroyed. Its handle is never used afterwards: it may become
  // another window's.
  void Close() noexcept;

 private:
  std::vector<std::function<void()>> Take();

  CriticalSection guard_;
  HWND window_;  // null when it is closed
  std::vector<std::function<void()>> tasks_;
  bool is_told_ = false;  // whether the message is on its way
};

}  // namespace brantel
