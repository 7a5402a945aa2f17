#pragma once

#include <cstdint>
#include <functional>
#include <vector>

#include "system/clock.h"

namespace brantel {

// A clock on which no time passes: it keeps what was waited for.
class VirtualClock final : public Clock {
 public:
  std::vector<std::uint32_t> waits;
  // Called within each wait, for what happens meanwhile.
  std::function<void()> meanwhile = [] {};

  void Wait(std::uint32_t milliseconds) override {
    waits.push_back(milliseconds);
    meanwhile();
  }
};

}  // namespace brantel
