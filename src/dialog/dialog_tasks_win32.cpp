#include "dialog/dialog_tasks_win32.h"

#include <utility>

namespace brantel {

WindowTasks::WindowTasks(HWND window) noexcept : window_(window) {
  guard_.Initialize();
}

WindowTasks::~WindowTasks() {
  guard_.Delete();
}

void WindowTasks::Post(std::function<void()> task) {
  const CriticalSection::Lock lock(guard_);
  if (window_ == nullptr) return;
  tasks_.push_back(std::move(task));
  // One message for all that are pending: a thread's queue holds only so many. Where
  // it is full the next task tries again.
  if (!is_told_) is_told_ = PostMessageA(window_, kMessage, 0, 0) != FALSE;
}

bool WindowTasks::IsOpen() {
  const CriticalSection::Lock lock(guard_);
  return window_ != nullptr;
}

void WindowTasks::Do() {
  for (const auto& task : Take()) {
    task();
  }
}

void WindowTasks::Close() noexcept {
  const CriticalSection::Lock lock(guard_);
  window_ = nullptr;
  tasks_.clear();
}

std::vector<std::function<void()>> WindowTasks::Take() {
  const CriticalSection::Lock lock(guard_);
  is_told_ = false;
  return std::exchange(tasks_, {});
}

}  // namespace brantel
