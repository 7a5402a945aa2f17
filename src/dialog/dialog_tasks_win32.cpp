#include "dialog/dialog_tasks_win32.h"

#include <utility>

namespace brantel {
namespace {

class Guarded {
 public:
  explicit Guarded(CRITICAL_SECTION& guard) noexcept : guard_(guard) {
    EnterCriticalSection(&guard_);
  }
  Guarded(const Guarded&) = delete;
  Guarded& operator=(const Guarded&) = delete;
  ~Guarded() { LeaveCriticalSection(&guard_); }

 private:
  CRITICAL_SECTION& guard_;
};

}  // namespace

WindowTasks::WindowTasks(HWND window) noexcept : window_(window) {
  InitializeCriticalSection(&guard_);
}

WindowTasks::~WindowTasks() {
  DeleteCriticalSection(&guard_);
}

void WindowTasks::Post(std::function<void()> task) {
  const Guarded guarded(guard_);
  if (window_ == nullptr) return;
  tasks_.push_back(std::move(task));
  // One message for all that are pending: a thread's queue holds only so many. Where
  // it is full the next task tries again.
  if (!is_told_) is_told_ = PostMessageA(window_, kMessage, 0, 0) != FALSE;
}

bool WindowTasks::IsOpen() {
  const Guarded guarded(guard_);
  return window_ != nullptr;
}

void WindowTasks::Do() {
  for (const auto& task : Take()) {
    task();
  }
}

void WindowTasks::Close() noexcept {
  const Guarded guarded(guard_);
  window_ = nullptr;
  tasks_.clear();
}

std::vector<std::function<void()>> WindowTasks::Take() {
  const Guarded guarded(guard_);
  is_told_ = false;
  return std::exchange(tasks_, {});
}

}  // namespace brantel
