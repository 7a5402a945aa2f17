#pragma once

#include <cstdint>

namespace brantel {

// Time, as far as a notifier has to let it pass.
class Clock {
 public:
  virtual ~Clock() = default;

  // Blocks the calling thread for so many milliseconds.
  virtual void Wait(std::uint32_t milliseconds) = 0;
};

}  // namespace brantel
