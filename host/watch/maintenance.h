#pragma once

#include <cstddef>
#include <string>

#include "host/text/point_in_time.h"
#include "host/watch/watch_plan.h"

namespace brantel::host {

// Whether the time lies in it. It begins with `from` and is over with `to`.
bool IsWithin(const MaintenanceTime& maintenance, const PointInTime& time);

// The name of a maintenance time of the item that this lies in; empty when there is none.
std::string MaintenanceOf(const WatchPlan& plan, std::size_t item, const PointInTime& time);

}  // namespace brantel::host
