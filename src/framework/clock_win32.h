#pragma once

#include "framework/clock.h"

namespace brantel {

class SystemClock final : public Clock {
 public:
  void Wait(std::uint32_t milliseconds) override;
};

}  // namespace brantel
