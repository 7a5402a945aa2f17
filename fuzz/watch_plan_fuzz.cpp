// Files of plans: whatever a file holds, there is a complaint with a line or a plan that can be
// gone by.
#include <cstddef>
#include <cstdint>
#include <string_view>

#include "fuzz/fuzz_input.h"
#include "host/watch/maintenance.h"
#include "host/watch/plan_reader.h"

namespace brantel::host {
namespace {

void CheckItem(const WatchPlan& plan, std::size_t place) {
  const WatchedItem& item = plan.items[place];
  Require(!item.name.empty() && !item.probe.host.empty());
  Require(item.interval > item.probe.timeout && item.probe.timeout.count() > 0);
  Require(item.down_after > 0 && item.up_after > 0);
  for (const std::size_t alert : item.alerts)
    Require(alert < plan.alerts.size());
  for (const std::size_t dependency : AllDependencies(plan, place))
    Require(dependency < plan.items.size() && dependency != place);
  (void)MaintenanceOf(plan, place, PointInTime{});
}

void CheckPlan(std::string_view text) {
  const PlanReading reading = ReadPlan(text);
  for (const PlanComplaint& complaint : reading.complaints)
    Require(complaint.line > 0 && !complaint.words.empty());
  if (!reading.complaints.empty()) return;
  for (std::size_t place = 0; place < reading.plan.items.size(); ++place)
    CheckItem(reading.plan, place);
}

}  // namespace
}  // namespace brantel::host

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  brantel::host::CheckPlan({reinterpret_cast<const char*>(data), size});
  return 0;
}
