#include "host/watch/outbox.h"

#include <algorithm>
#include <utility>

namespace brantel::host {
namespace {

// The first open decision of each item and instance, as far as its pause is over.
std::vector<const OpenDecision*> DueDecisions(const WatchMemory& memory, const WatchPlan& plan,
                                              SteadyTime now) {
  std::set<std::pair<std::string, std::string>> seen;
  std::vector<const OpenDecision*> due;
  for (const auto& [id, open] : memory.open()) {
    const bool is_first = seen.emplace(open.decision.item, open.decision.instance).second;
    if (!is_first || open.is_under_way) continue;
    const AlertRule& rule = RuleNamed(plan, open.decision.rule);
    if (open.attempts == 0 || now >= open.ended + RetryPause(rule, open.attempts))
      due.push_back(&open);
  }
  std::ranges::stable_sort(due, {}, [](const OpenDecision* open) { return open->attempts > 0; });
  return due;
}

}  // namespace

SteadyTime RetryPause(const AlertRule& rule, int attempts) {
  SteadyTime pause = rule.retry;
  for (int i = 1; i < attempts && pause < rule.retry_most; ++i)
    pause *= 2;
  return std::min(pause, rule.retry_most);
}

std::vector<Decision> Outbox::Begin(const WatchMemory& memory, const WatchPlan& plan,
                                    SteadyTime now) {
  std::set<std::string> taken;
  for (const auto& [id, resources] : running_)
    taken.insert(resources.begin(), resources.end());

  std::vector<Decision> begun;
  std::map<std::string, std::vector<std::string>> needs;  // of instances, found once for all
  for (const OpenDecision* const open : DueDecisions(memory, plan, now)) {
    const std::string& instance = open->decision.instance;
    if (!needs.contains(instance)) needs.emplace(instance, find_resources_(instance));
    const std::vector<std::string>& needed = needs.at(instance);
    const bool is_free = std::ranges::none_of(
        needed, [&](const auto& resource) { return taken.contains(resource); });
    // Also when it has to wait, so that whoever comes later does not overtake it for ever.
    taken.insert(needed.begin(), needed.end());
    if (!is_free) continue;
    running_.emplace(open->decision.id, needed);
    begun.push_back(open->decision);
  }
  return begun;
}

}  // namespace brantel::host
