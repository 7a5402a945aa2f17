#include "host/watch/maintenance.h"

#include <algorithm>
#include <chrono>

namespace brantel::host {
namespace {

using std::chrono::days;
using std::chrono::milliseconds;

using LocalTime = std::chrono::sys_time<milliseconds>;

bool BeginsOn(const MaintenanceTime& maintenance, const std::chrono::sys_days& day) {
  return maintenance.days.at(std::chrono::weekday(day).c_encoding());
}

bool IsWithinWeek(const MaintenanceTime& maintenance, const LocalTime& local) {
  const auto today = std::chrono::floor<days>(local);
  const milliseconds clock = local - today;
  const bool has_begun = clock >= maintenance.from;
  const bool is_over = clock >= maintenance.to;
  if (maintenance.from < maintenance.to)
    return BeginsOn(maintenance, today) && has_begun && !is_over;
  // Over midnight: that of today, or what is left of yesterday's.
  return (BeginsOn(maintenance, today) && has_begun) ||
         (BeginsOn(maintenance, today - days(1)) && !is_over);
}

}  // namespace

bool IsWithin(const MaintenanceTime& maintenance, const PointInTime& time) {
  const LocalTime local = time.utc + time.offset;
  if (!maintenance.is_once) return IsWithinWeek(maintenance, local);
  return local.time_since_epoch() >= maintenance.begin &&
         local.time_since_epoch() < maintenance.end;
}

std::string MaintenanceOf(const WatchPlan& plan, std::size_t item, const PointInTime& time) {
  for (const MaintenanceTime& maintenance : plan.maintenance) {
    const bool is_for_item = maintenance.items.empty() ||
                             std::ranges::find(maintenance.items, item) != maintenance.items.end();
    if (is_for_item && IsWithin(maintenance, time)) return maintenance.name;
  }
  return "";
}

}  // namespace brantel::host
