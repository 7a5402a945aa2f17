#pragma once

#include <cstdint>

#include "system/clock.h"

namespace brantel::host {

// A clock that lets no time pass and only counts it.
class PaperClock final : public Clock {
 public:
  void Wait(std::uint32_t milliseconds) override { Count(milliseconds); }

  void Count(std::uint64_t milliseconds) { passed_ += milliseconds; }
  [[nodiscard]] std::uint64_t passed() const { return passed_; }

 private:
  std::uint64_t passed_ = 0;
};

}  // namespace brantel::host
