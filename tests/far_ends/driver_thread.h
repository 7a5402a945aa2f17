#pragma once

#include <condition_variable>
#include <functional>
#include <mutex>
#include <thread>

namespace brantel {

// The thread of a device driver, on which it calls back.
class DriverThread {
 public:
  DriverThread() = default;
  DriverThread(const DriverThread&) = delete;
  DriverThread& operator=(const DriverThread&) = delete;
  ~DriverThread();

  // Runs it there, and waits for its end.
  void Run(const std::function<void()>& task);

 private:
  void Work();

  std::mutex mutex_;
  std::condition_variable changed_;
  const std::function<void()>* task_ = nullptr;
  bool is_ending_ = false;
  std::thread thread_{[this] { Work(); }};
};

}  // namespace brantel
