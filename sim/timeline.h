#pragma once

#include <chrono>
#include <cstdint>
#include <functional>
#include <map>
#include <optional>
#include <utility>

namespace brantel::sim {

// Time since the simulator started.
using Time = std::chrono::milliseconds;

// What is to happen, and when. Time passes only when it is told to, so that tests need not wait.
class Timeline {
 public:
  using Ticket = std::pair<Time, std::uint64_t>;

  [[nodiscard]] Time now() const { return now_; }

  Ticket After(Time delay, std::function<void()> action);

  // Without effect for what has happened already.
  void Cancel(const Ticket& ticket) { planned_.erase(ticket); }

  // When something happens next.
  [[nodiscard]] std::optional<Time> NextTime() const;

  // Lets time pass, and everything happen that is due on the way.
  void AdvanceTo(Time time);

 private:
  Time now_{0};
  std::uint64_t last_number_ = 0;
  // In the order of time, and of planning where times are equal.
  std::map<Ticket, std::function<void()>> planned_;
};

}  // namespace brantel::sim
