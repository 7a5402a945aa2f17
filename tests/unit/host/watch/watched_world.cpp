#include "tests/unit/host/watch/watched_world.h"

#include <gtest/gtest.h>

#include <algorithm>

namespace brantel::host {
namespace {

using std::chrono::milliseconds;
using std::chrono::seconds;

constexpr milliseconds kProbeTime{20};

}  // namespace

void JournalOnPaper::Keep(const WatchRecord& record) {
  std::string line = WatchLine(record);
  const bool is_killed = left_ == 1;
  left_ -= left_ > 0 ? 1 : 0;
  if (is_killed && cut_ == Cut::kBefore) throw Killed();
  if (is_killed && cut_ == Cut::kWithin) {
    Append(line.substr(0, line.size() / 2));
    throw Killed();
  }
  Append(line);
  if (is_killed) throw Killed();
}

void JournalOnPaper::Append(const std::string& bytes) {
  for (std::string* const text : {&content_, &all_}) {
    if (!text->empty() && text->back() != '\n') *text += '\n';
    *text += bytes;
  }
}

void JournalOnPaper::Replace(const std::vector<WatchRecord>& records) {
  content_.clear();
  for (const WatchRecord& record : records)
    content_ += WatchLine(record);
}

WatchedWorld::WatchedWorld(WatchPlan plan, std::uint64_t seed)
    : plan_(std::move(plan)), chance_(seed) {
  for (const WatchedItem& item : plan_.items)
    states_[item.name] = true;
  Begin();
}

Moment WatchedWorld::Now() const {
  // A Sunday.
  const auto start = ParseTime("2026-11-22T03:00:00.000+01:00")->utc;
  return {now_, {start + now_ + wall_ahead_, offset_}};
}

void WatchedWorld::Begin() {
  const auto find_resources = [this](const std::string& instance) {
    const auto found = resources_.find(instance);
    return found == resources_.end() ? std::vector{instance} : found->second;
  };
  while (!watch_) {
    try {
      const WatchMemory memory = RememberedBy(journal_.Records(), Now());
      journal_.Replace(memory.Records(Now().wall));
      watch_.emplace(plan_, RememberedBy(journal_.Records(), Now()), journal_, find_resources,
                     chance_(), Now());
    } catch (const Killed&) {
      ++restarts_;
    }
  }
}

void WatchedWorld::Restart(SteadyTime pause) {
  ++restarts_;
  watch_.reset();
  probes_.clear();
  // Of what was under way some has got out, and nobody knows.
  for (AttemptUnderWay& attempt : attempts_) {
    const Decision& decision = attempt.order.decision;
    if (attempt.gets_through && chance_() % 2 == 0)
      deliveries_.push_back({decision.id, decision.item, decision.rule, decision.instance,
                             decision.kind, decision.incident, decision.variables, now_});
  }
  attempts_.clear();
  now_ += pause;
  Begin();
}

void WatchedWorld::ChangePlan(WatchPlan plan) {
  plan_ = std::move(plan);
  watch_->ChangePlan(plan_, Now());
}

void WatchedWorld::Run(SteadyTime time) {
  const SteadyTime end = now_ + time;
  while (now_ < end) {
    try {
      Step();
      SteadyTime next = std::max(watch_->Next(Now()), now_ + milliseconds(1));
      for (const ProbeUnderWay& probe : probes_)
        next = std::min(next, probe.end);
      for (const AttemptUnderWay& attempt : attempts_)
        next = std::min(next, attempt.end);
      now_ = std::min(std::max(next, now_ + milliseconds(1)), end);
    } catch (const Killed&) {
      Restart();
    }
  }
}

void WatchedWorld::Step() {
  EndProbes();
  EndAttempts();
  Obey(watch_->Tick(Now()));
}

void WatchedWorld::Obey(const Watch::Orders& orders) {
  for (const ProbeOrder& order : orders.probes) {
    ++probes_begun_;
    latest_probe_ = std::max(latest_probe_, now_ - order.due);
    EXPECT_TRUE(std::ranges::none_of(
        probes_, [&](const ProbeUnderWay& probe) { return probe.item == order.item; }))
        << order.item << " is looked at twice at once";
    const std::optional<bool> is_up = states_[order.item];
    const ProbeResult result{is_up.value_or(false),
                             is_up ? (*is_up ? "it answers" : "it is refused") : "no answer"};
    probes_.push_back(
        {order.id, order.item, result, now_ + (is_up ? kProbeTime : order.request.timeout)});
  }
  for (const AttemptOrder& order : orders.attempts) {
    for (const AttemptUnderWay& other : attempts_) {
      const auto one = resources_[order.decision.instance];
      for (const std::string& resource : resources_[other.order.decision.instance])
        EXPECT_EQ(std::ranges::count(one, resource), 0) << resource << " is shared";
    }
    attempts_.push_back({order, now_ + attempt_time_, !broken_.contains(order.decision.instance)});
  }
  most_probes_ = std::max(most_probes_, static_cast<int>(probes_.size()));
  most_attempts_ = std::max(most_attempts_, static_cast<int>(attempts_.size()));
}

void WatchedWorld::EndProbes() {
  std::vector<ProbeUnderWay> ended;
  std::erase_if(probes_, [&](const ProbeUnderWay& probe) {
    if (probe.end <= now_) ended.push_back(probe);
    return probe.end <= now_;
  });
  for (const ProbeUnderWay& probe : ended)
    watch_->TakeProbe(probe.id, probe.result, Now());
}

void WatchedWorld::EndAttempts() {
  std::vector<AttemptUnderWay> ended;
  std::erase_if(attempts_, [&](const AttemptUnderWay& attempt) {
    if (attempt.end <= now_) ended.push_back(attempt);
    return attempt.end <= now_;
  });
  for (const AttemptUnderWay& attempt : ended) {
    const Decision& decision = attempt.order.decision;
    if (attempt.gets_through)
      deliveries_.push_back({decision.id, decision.item, decision.rule, decision.instance,
                             decision.kind, decision.incident, decision.variables, now_});
    watch_->TakeAttempt(decision.id,
                        {attempt.gets_through ? AlertEnd::kDelivered : AlertEnd::kFailed,
                         attempt.gets_through && acknowledging_.contains(decision.instance),
                         attempt.gets_through ? "taken" : "refused"},
                        Now());
  }
}

std::vector<std::string> WatchedWorld::TakeDeliveries() {
  std::vector<std::string> told;
  for (; taken_ < deliveries_.size(); ++taken_) {
    const Delivery& delivery = deliveries_[taken_];
    told.push_back(std::string(AlertKindName(delivery.kind)) + " " + delivery.item + " through " +
                   delivery.instance);
  }
  return told;
}

ItemSnapshot WatchedWorld::Item(const std::string& name) const {
  for (ItemSnapshot& item : watch_->Items(Now())) {
    if (item.name == name) return item;
  }
  return {};
}

WatchPlan PlanOf(const std::vector<std::string>& items) {
  WatchPlan plan{.parallel = 100, .jitter = 5};
  for (const std::string& name : items) {
    plan.items.push_back({.name = name,
                          .device = name,
                          .probe = {.host = "192.0.2.1", .port = 80, .timeout = seconds(3)},
                          .interval = seconds(10),
                          .down_after = 2,
                          .up_after = 2,
                          .alerts = {0}});
  }
  plan.alerts = {{.name = "night", .instances = {"Mail"}}};
  return plan;
}

}  // namespace brantel::host
