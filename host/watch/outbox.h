#pragma once

#include <chrono>
#include <functional>
#include <map>
#include <set>
#include <string>
#include <vector>

#include "host/watch/moment.h"
#include "host/watch/watch_memory.h"
#include "host/watch/watch_plan.h"

namespace brantel::host {

// What an alert through an instance needs for itself, such as its class and a serial port. Two
// alerts that need the same are never under way at once.
using ResourceFinder = std::function<std::vector<std::string>(const std::string& instance)>;

// How long it is waited after so many attempts that came to nothing.
SteadyTime RetryPause(const AlertRule& rule, int attempts);

// Chooses which decisions are to be attempted now. An item's alerts through an instance go out in
// the order in which they were decided; and what was never tried comes before what has failed, so
// that an instance that is out of order keeps nobody else waiting for longer than it must.
class Outbox {
 public:
  explicit Outbox(ResourceFinder find_resources) : find_resources_(std::move(find_resources)) {}

  // What may begin now, and counts as begun.
  std::vector<Decision> Begin(const WatchMemory& memory, const WatchPlan& plan, SteadyTime now);
  void End(WatchNumber decision) { running_.erase(decision); }

  [[nodiscard]] bool is_idle() const { return running_.empty(); }

 private:
  ResourceFinder find_resources_;
  std::map<WatchNumber, std::vector<std::string>> running_;  // with what they need
};

}  // namespace brantel::host
