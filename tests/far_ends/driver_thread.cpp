#include "tests/far_ends/driver_thread.h"

namespace brantel {

DriverThread::~DriverThread() {
  {
    const std::lock_guard lock(mutex_);
    is_ending_ = true;
  }
  changed_.notify_all();
  thread_.join();
}

void DriverThread::Run(const std::function<void()>& task) {
  std::unique_lock lock(mutex_);
  task_ = &task;
  changed_.notify_all();
  changed_.wait(lock, [this] { return task_ == nullptr; });
}

void DriverThread::Work() {
  std::unique_lock lock(mutex_);
  while (true) {
    changed_.wait(lock, [this] { return is_ending_ || task_ != nullptr; });
    if (is_ending_) return;
    (*task_)();
    task_ = nullptr;
    changed_.notify_all();
  }
}

}  // namespace brantel
