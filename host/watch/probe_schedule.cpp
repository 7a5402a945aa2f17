#include "host/watch/probe_schedule.h"

#include <algorithm>
#include <map>

namespace brantel::host {
namespace {

// Within which part of its interval each item is looked at first.
constexpr int kFirstPart = 10;

// A number that looks like chance and is the same for the same seed (SplitMix64).
std::uint64_t Scattered(std::uint64_t seed) {
  seed += 0x9E3779B97F4A7C15U;
  seed = (seed ^ (seed >> 30U)) * 0xBF58476D1CE4E5B9U;
  seed = (seed ^ (seed >> 27U)) * 0x94D049BB133111EBU;
  return seed ^ (seed >> 31U);
}

}  // namespace

void ProbeSchedule::TakePlan(const WatchPlan& plan, SteadyTime now) {
  std::map<std::string, Slot> known;
  for (Slot& slot : slots_)
    known.emplace(slot.name, slot);
  parallel_ = plan.parallel;
  jitter_ = plan.jitter;
  slots_.clear();
  under_way_ = 0;
  for (std::size_t i = 0; i < plan.items.size(); ++i) {
    Slot slot = NewSlot(plan.items[i], i, now);
    if (const auto old = known.find(slot.name); old != known.end()) {
      if (old->second.interval == slot.interval) slot = old->second;
      slot.is_under_way = old->second.is_under_way;
    }
    under_way_ += slot.is_under_way ? 1 : 0;
    slots_.push_back(std::move(slot));
  }
}

ProbeSchedule::Slot ProbeSchedule::NewSlot(const WatchedItem& item, std::size_t place,
                                           SteadyTime now) const {
  const auto part = static_cast<std::uint64_t>(item.interval.count() / kFirstPart + 1);
  const SteadyTime first =
      now + SteadyTime(static_cast<std::int64_t>(Scattered(seed_ ^ place) % part));
  return {.name = item.name,
          .interval = item.interval,
          .point = first,
          .due = first,
          .count = Scattered(seed_ + place)};
}

SteadyTime ProbeSchedule::Jitter(const Slot& slot) const {
  const std::int64_t most = slot.interval.count() * jitter_ / 100;
  const auto range = static_cast<std::uint64_t>(2 * most + 1);
  return SteadyTime(static_cast<std::int64_t>(Scattered(seed_ ^ slot.count) % range) - most);
}

void ProbeSchedule::Advance(Slot& slot, SteadyTime now) const {
  slot.point += slot.interval;
  if (slot.point <= now) slot.point += (now - slot.point) / slot.interval * slot.interval;
  if (slot.point <= now) slot.point += slot.interval;
  ++slot.count;
  slot.due = std::max(slot.point + Jitter(slot), now + slot.interval / 2);
}

std::vector<ProbeSchedule::Start> ProbeSchedule::Begin(SteadyTime now) {
  std::vector<Start> due;
  for (std::size_t i = 0; i < slots_.size(); ++i) {
    const Slot& slot = slots_[i];
    if (!slot.is_under_way && (slot.is_hastened || slot.due <= now))
      due.push_back({i, std::min(slot.due, now)});
  }
  std::ranges::stable_sort(due, {}, &Start::due);
  due.resize(std::min(due.size(), static_cast<std::size_t>(std::max(parallel_ - under_way_, 0))));
  for (const Start& start : due) {
    Slot& slot = slots_[start.item];
    slot.is_under_way = true;
    slot.is_hastened = false;
    if (slot.due <= now) Advance(slot, now);
  }
  under_way_ += static_cast<int>(due.size());
  return due;
}

void ProbeSchedule::End(std::size_t item) {
  under_way_ -= slots_[item].is_under_way ? 1 : 0;
  slots_[item].is_under_way = false;
}

void ProbeSchedule::Hasten(std::size_t item) {
  slots_[item].is_hastened = true;
}

SteadyTime ProbeSchedule::Next(SteadyTime now) const {
  SteadyTime next = now + std::chrono::seconds(1);
  if (under_way_ >= parallel_) return next;
  for (const Slot& slot : slots_) {
    if (!slot.is_under_way) next = std::min(next, slot.is_hastened ? now : slot.due);
  }
  return next;
}

}  // namespace brantel::host
