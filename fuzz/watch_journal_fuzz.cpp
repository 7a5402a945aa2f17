// Journals of watches: whatever a file holds, what is read from it is written back as it was, and a
// watch can go on from it; what it then knows is the same from fewer lines.
#include <cstddef>
#include <cstdint>
#include <string_view>

#include "fuzz/fuzz_input.h"
#include "host/watch/watch.h"

namespace brantel::host {
namespace {

class NoKeeper final : public RecordKeeper {
 public:
  void Keep(const WatchRecord&) override {}
};

WatchPlan SmallPlan() {
  WatchPlan plan{.parallel = 10, .jitter = 5};
  plan.items = {
      {.name = "router", .interval = std::chrono::seconds(10), .down_after = 1, .up_after = 1},
      {.name = "web",
       .interval = std::chrono::seconds(10),
       .down_after = 1,
       .up_after = 1,
       .depends_on = {0},
       .alerts = {0}}};
  plan.alerts = {{.name = "night", .instances = {"Mail"}, .repeat = std::chrono::seconds(30)}};
  return plan;
}

void GoOn(const WatchMemory& memory, Moment now) {
  NoKeeper nobody;
  Watch watch(
      SmallPlan(), memory, nobody,
      [](const std::string& instance) { return std::vector{instance}; }, 1, now);
  for (int i = 0; i < 30; ++i) {
    const Watch::Orders orders = watch.Tick(now);
    for (const ProbeOrder& order : orders.probes)
      watch.TakeProbe(order.id, {i % 2 == 0, "it answers"}, now);
    for (const AttemptOrder& order : orders.attempts)
      watch.TakeAttempt(order.decision.id, {.end = AlertEnd::kDelivered}, now);
    now.steady += std::chrono::seconds(5);
    now.wall.utc += std::chrono::seconds(5);
  }
  Require(watch.Items(now).size() == 2);
}

void CheckJournal(std::string_view content) {
  const auto records = ReadWatchLines(content);
  for (const WatchRecord& record : records)
    Require(ParseWatchLine(WatchLine(record)) == record);
  const Moment now{.wall = *ParseTime("2026-11-22T03:00:00.000+01:00")};
  const WatchMemory memory = RememberedBy(records, now);
  const auto fewer = memory.Records(now.wall);
  Require(RememberedBy(fewer, now).Records(now.wall) == fewer);
  GoOn(memory, now);
}

}  // namespace
}  // namespace brantel::host

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  brantel::host::CheckJournal({reinterpret_cast<const char*>(data), size});
  return 0;
}
