#pragma once

#include <windows.h>

#include <atomic>

namespace brantel {

// Lets a fixed number of threads go on together, as often as they all come. They wait awake, so
// that they leave within the same moment.
class ThreadGate {
 public:
  explicit ThreadGate(long threads) : threads_(threads) {}

  void PassTogether() {
    const long arrival = arrivals_++;
    const long of_this_passage = (arrival / threads_ + 1) * threads_;
    while (arrivals_ < of_this_passage)
      SwitchToThread();
  }

 private:
  const long threads_;
  std::atomic<long> arrivals_ = 0;
};

}  // namespace brantel
