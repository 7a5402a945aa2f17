#pragma once

#include <windows.h>

#include <string>

#include "host/text/point_in_time.h"

namespace brantel::host {

// This computer's, in UTF-8.
std::string ComputerName();

// Whether the process with this number, which ran at that time, still does. Numbers are used again.
bool IsRunning(DWORD process, const PointInTime& time);

}  // namespace brantel::host
