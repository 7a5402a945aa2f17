#include "host/system/present_time_win32.h"

#include <windows.h>

namespace brantel::host {
namespace {

// By how much this place is behind UTC now.
std::chrono::minutes Bias() {
  TIME_ZONE_INFORMATION zone{};
  const DWORD season = GetTimeZoneInformation(&zone);
  const LONG seasonal = season == TIME_ZONE_ID_DAYLIGHT   ? zone.DaylightBias
                        : season == TIME_ZONE_ID_STANDARD ? zone.StandardBias
                                                          : 0;
  return std::chrono::minutes(zone.Bias + seasonal);
}

}  // namespace

PointInTime PresentTime() {
  return {std::chrono::floor<std::chrono::milliseconds>(std::chrono::system_clock::now()), -Bias()};
}

}  // namespace brantel::host
