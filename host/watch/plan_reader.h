#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "host/watch/watch_plan.h"

namespace brantel::host {

// What is wrong with a plan's file, and where.
struct PlanComplaint {
  std::uint32_t line = 0;
  std::string words{};  // the field, what is allowed, and what stands there

  friend bool operator==(const PlanComplaint&, const PlanComplaint&) = default;
};

// "line 12: items.web.interval: must be 1 s to 1 d; it is 0".
std::string ComplaintText(const PlanComplaint& complaint);

struct PlanReading {
  WatchPlan plan{};  // only to be used when there is no complaint
  std::vector<PlanComplaint> complaints{};
};

// Reads a plan as TOML 1.0. All that is wrong with it is found at once, but for the first thing
// that is no TOML.
PlanReading ReadPlan(std::string_view text);

}  // namespace brantel::host
