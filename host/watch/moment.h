#pragma once

#include <chrono>

#include "host/text/point_in_time.h"

namespace brantel::host {

// A time by a clock that nobody sets, since some point that does not matter. Also a length of time.
using SteadyTime = std::chrono::milliseconds;

// One moment by both clocks: schedules go by the one that nobody sets, maintenance times and what
// people read by the one on the wall.
struct Moment {
  SteadyTime steady{};
  PointInTime wall{};
};

}  // namespace brantel::host
