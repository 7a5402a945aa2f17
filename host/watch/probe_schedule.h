#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <vector>

#include "host/watch/moment.h"
#include "host/watch/watch_plan.h"

namespace brantel::host {

// When each item of a plan is looked at. Each has points in time that are an interval apart, and is
// looked at a little earlier or later than these, so that what began together does not stay so.
// What is looked at is not looked at once more meanwhile, and what was missed is not made up for.
class ProbeSchedule {
 public:
  explicit ProbeSchedule(std::uint64_t seed) : seed_(seed) {}

  // Goes by the plan from now on. Items of the same name and interval keep their times.
  void TakePlan(const WatchPlan& plan, SteadyTime now);

  struct Start {
    std::size_t item = 0;
    SteadyTime due{};

    friend bool operator==(const Start&, const Start&) = default;
  };

  // Those that are due, the longest first, as far as so many may be looked at at once.
  std::vector<Start> Begin(SteadyTime now);
  void End(std::size_t item);

  // Has the item looked at once more, as soon as may be and beside its times. What is under way
  // does not count.
  void Hasten(std::size_t item);

  // When the next one is due that is not being looked at. In a second at the latest.
  [[nodiscard]] SteadyTime Next(SteadyTime now) const;

  [[nodiscard]] bool is_under_way(std::size_t item) const { return slots_[item].is_under_way; }

 private:
  struct Slot {
    std::string name{};
    SteadyTime interval{};
    SteadyTime point{};
    SteadyTime due{};
    std::uint64_t count = 0;
    bool is_under_way = false;
    bool is_hastened = false;
  };

  [[nodiscard]] SteadyTime Jitter(const Slot& slot) const;
  [[nodiscard]] Slot NewSlot(const WatchedItem& item, std::size_t place, SteadyTime now) const;
  void Advance(Slot& slot, SteadyTime now) const;

  std::uint64_t seed_;
  int parallel_ = 0;
  int jitter_ = 0;
  std::vector<Slot> slots_;
  int under_way_ = 0;
};

}  // namespace brantel::host
