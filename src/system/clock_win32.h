#pragma once

#include "system/clock.h"

namespace brantel {

class SystemClock final : public Clock {
 public:
  void Wait(std::uint32_t milliseconds) override;
};

// Stateless, so that all use this one.
inline constinit SystemClock system_clock;

}  // namespace brantel
