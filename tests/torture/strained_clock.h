#pragma once

#include <cstdint>
#include <stdexcept>

#include "system/clock.h"

namespace brantel {

// Thrown by a wait that nothing would ever end.
struct WaitsForEver : std::runtime_error {
  WaitsForEver() : std::runtime_error("waits for ever") {}
};

// A clock on which no time passes but that which is waited for, anywhere in the machine.
class StrainedClock final : public Clock {
 public:
  void Wait(std::uint32_t milliseconds) override { Pass(milliseconds); }

  void Pass(std::uint64_t milliseconds) {
    constexpr std::uint64_t kDay = 24ULL * 60 * 60 * 1000;
    constexpr std::size_t kMostWaits = 100'000;
    elapsed_ += milliseconds;
    if (elapsed_ > kDay || ++waits_ > kMostWaits) WaitForEver();
  }

  [[noreturn]] void WaitForEver() {
    waits_for_ever_ = true;
    throw WaitsForEver();
  }

  // The alert that comes next begins.
  void Restart() { *this = {}; }

  [[nodiscard]] std::uint64_t elapsed() const { return elapsed_; }
  [[nodiscard]] bool waits_for_ever() const { return waits_for_ever_; }

 private:
  std::uint64_t elapsed_ = 0;
  std::size_t waits_ = 0;
  bool waits_for_ever_ = false;
};

}  // namespace brantel
