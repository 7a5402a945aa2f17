#include "host/watch/watch_plan.h"

#include <algorithm>

namespace brantel::host {

std::optional<std::size_t> PlaceOfItem(const WatchPlan& plan, const std::string& name) {
  const auto found = std::ranges::find(plan.items, name, &WatchedItem::name);
  if (found == plan.items.end()) return std::nullopt;
  return static_cast<std::size_t>(found - plan.items.begin());
}

const AlertRule& RuleNamed(const WatchPlan& plan, const std::string& name) {
  const auto found = std::ranges::find(plan.alerts, name, &AlertRule::name);
  return found == plan.alerts.end() ? kOwnRuleIsGone : *found;
}

std::vector<std::size_t> AllDependencies(const WatchPlan& plan, std::size_t item) {
  std::vector<std::size_t> found = plan.items[item].depends_on;
  for (std::size_t looked_at = 0; looked_at < found.size(); ++looked_at) {
    for (const std::size_t further : plan.items[found[looked_at]].depends_on) {
      if (std::ranges::find(found, further) == found.end()) found.push_back(further);
    }
  }
  return found;
}

}  // namespace brantel::host
