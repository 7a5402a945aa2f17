#pragma once

#include <atomic>
#include <thread>

namespace brantel {

// Lets a fixed number of threads go on together, as often as they all come. They wait awake, so
// that they leave within the same moment, and since a thread that sleeps in one of the standard
// library's own gates may sleep on where the system has no futexes (GCC 12 for Windows).
class ThreadGate {
 public:
  explicit ThreadGate(long threads) : threads_(threads) {}

  void PassTogether() {
    const long arrival = arrivals_++;
    const long of_this_passage = (arrival / threads_ + 1) * threads_;
    while (arrivals_ < of_this_passage)
      std::this_thread::yield();
  }

 private:
  const long threads_;
  std::atomic<long> arrivals_ = 0;
};

}  // namespace brantel
