#pragma once

#include "host/text/point_in_time.h"

namespace brantel::host {

PointInTime PresentTime();

}  // namespace brantel::host
