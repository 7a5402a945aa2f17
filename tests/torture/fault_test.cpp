// Every scenario with every allocation and every call on the system failing in turn, once and from
// then on. Whatever fails: nobody is told of a success that is none, nothing stays open or
// allocated, no file is half written, the log says why an alert did not go out, and the next one
// does.
#include <gtest/gtest.h>

#include <algorithm>
#include <array>
#include <memory>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "tests/torture/figures.h"
#include "tests/torture/scenario.h"
#include "tests/unit/allocation_counter.h"

namespace brantel {
namespace {

// One way for a scenario to be disturbed, by its n-th allocation or call.
struct Strain {
  std::string_view name;
  Lasting lasting;
  bool strikes_memory = false;
  std::size_t way = 0;  // of a call to fail

  void Begin(Machine& machine, std::size_t n) const {
    if (!strikes_memory) return machine.faults.Plan(n, lasting, way);
    if (lasting == Lasting::kOnce) {
      FailAllocation(n);
    } else {
      FailAllocationsFrom(n);
    }
  }

  // Ends it, and says whether anything has failed.
  [[nodiscard]] bool End(const Machine& machine) const {
    const bool has_struck =
        strikes_memory ? FailedAllocations() != 0 : machine.faults.failures() != 0;
    FailAllocation(0);
    return has_struck;
  }
};

constexpr std::array kMemoryStrains = {
    Strain{"once", Lasting::kOnce, true},
    Strain{"for good", Lasting::kForGood, true},
};

constexpr std::size_t kWays = 5;
constexpr std::array kSystemStrains = {
    Strain{"once", Lasting::kOnce},
    Strain{"for good", Lasting::kForGood},
};

// What may come of a scenario where a call on the system fails.
struct Course {
  std::string_view scenario;
  std::string_view failed_call;
};

// Successes that are none.
constexpr std::array kSuccessesAmongFaults = std::to_array<Course>({
    // Deliberately a system without a network library has no pop-ups, which is no failure.
    {"alert_popup", "load"},
    {"alert_popup_refused", "load"},
    // Deliberately a recipient counts as served to whom the relay's answer cannot be read.
    {"alert_mail", "receive"},
    {"alert_mail_ended_early", "receive"},
    {"alert_mail_to_many", "receive"},
    {"alert_japanese_mail", "receive"},
    {"alert_mail_for_nobody", "receive"},
    {"alert_mail_refused", "receive"},
});

// Alerts that never end. Deliberately nothing but the line itself ends the wait for a connection,
// also of a call that could not be placed.
constexpr std::array kWaitsForEver = std::to_array<Course>({
    {"alert_call", "make call"},
    {"alert_call_ignored", "make call"},
});

// Alerts that disturb as many of the next ones. Deliberately what a relay answers too late is read
// at the beginning of the next conversation, and so on for as many as have something left.
constexpr std::size_t kMostDisturbed = 2;
constexpr std::array kDisturbsTheNext = std::to_array<Course>({
    {"alert_mail", "receive"},
    {"alert_mail_ended_early", "receive"},
    {"alert_mail_ended_early", "send"},
    {"alert_mail_to_many", "receive"},
    {"alert_japanese_mail", "receive"},
    {"alert_mail_for_nobody", "receive"},
    {"alert_mail_refused", "receive"},
});

bool List(std::span<const Course> courses, const Scenario& scenario, const Machine& machine) {
  return std::ranges::any_of(courses, [&](const Course& course) {
    return course.scenario == scenario.name() && machine.faults.HasFailed(course.failed_call);
  });
}

// Whether a log has a line that the log of a success lacks.
bool TellsOfFailure(const std::vector<std::string>& log, const std::vector<std::string>& success) {
  return std::ranges::any_of(
      log, [&](const auto& line) { return std::ranges::find(success, line) == success.end(); });
}

class TortureTest : public ::testing::TestWithParam<const Scenario*> {
 protected:
  TortureTest() : whole_(RunWhole(*GetParam())) {}

  // Disturbs the scenario at its n-th place, and then lets it run once more. Whether it has been
  // disturbed.
  bool Disturb(const Strain& strain, std::size_t n) {
    bool has_struck = false;
    std::string complaint;
    const std::size_t blocks = AllocatedBlocks();
    {
      Machine machine;
      scenario().SetUp(machine);
      scenario().Begin(machine);
      strain.Begin(machine, n);
      const Result result = scenario().Run(machine);
      has_struck = strain.End(machine);
      complaint = Complaint(machine, result, strain);
      if (complaint.empty() && !Recovers(machine)) complaint = "the next one fails";
    }
    if (complaint.empty() && AllocatedBlocks() != blocks) complaint = "memory is left";
    if (!complaint.empty()) ADD_FAILURE() << strain.name << ", at place " << n << ": " << complaint;
    return has_struck;
  }

  [[nodiscard]] const Scenario& scenario() const { return *GetParam(); }
  [[nodiscard]] const Machine& whole() const { return *whole_; }

 private:
  [[nodiscard]] std::string Complaint(const Machine& machine, Result result,
                                      const Strain& strain) const {
    if (machine.clock.waits_for_ever()) {
      return List(kWaitsForEver, scenario(), machine) ? "" : "it waits for ever";
    }
    std::string verdict = scenario().Judge(machine, result, whole());
    const bool is_deliberate = !Failed(result) && List(kSuccessesAmongFaults, scenario(), machine);
    if (!verdict.empty() && !is_deliberate) return verdict;
    const std::string left = machine.Leftovers();
    // A line that telephony does not let go after five attempts is given up.
    const bool may_be_left = left == "telephony " && strain.lasting == Lasting::kForGood;
    if (!left.empty() && !may_be_left) return "left: " + left;
    const bool can_tell = strain.strikes_memory && strain.lasting == Lasting::kOnce;
    const bool has_to_tell = can_tell && Failed(result) && scenario().tells_failures();
    if (has_to_tell && !TellsOfFailure(machine.host_object.log, whole().host_object.log)) {
      return "the log does not say what failed";
    }
    return {};
  }

  // Whether the next run succeeds, or the one behind those that may be disturbed.
  [[nodiscard]] bool Recovers(Machine& machine) const {
    const std::size_t runs = 1 + (List(kDisturbsTheNext, scenario(), machine) ? kMostDisturbed : 0);
    for (std::size_t run = 0; run < runs; ++run) {
      scenario().Begin(machine);
      if (scenario().Run(machine) == scenario().expected()) return true;
    }
    return false;
  }

  std::unique_ptr<Machine> whole_;
};

TEST_P(TortureTest, StandsEveryAllocationThatFails) {
  for (const Strain& strain : kMemoryStrains) {
    std::size_t count = 0;
    {
      Machine machine;
      scenario().SetUp(machine);
      scenario().Begin(machine);
      constexpr std::size_t kFar = 1'000'000;
      FailAllocation(kFar);
      scenario().Run(machine);
      count = kFar - AllocationsUntilFailure();
      FailAllocation(0);
    }
    ASSERT_GT(count, 0U);
    for (std::size_t n = 1; n <= count; ++n) {
      EXPECT_TRUE(Disturb(strain, n)) << n << " of " << count;
      ++Figures().allocations;
      if (HasFailure()) return;
    }
    EXPECT_FALSE(Disturb(strain, count + 1));
  }
}

TEST_P(TortureTest, StandsEveryCallThatFails) {
  const std::size_t count = whole().faults.calls();
  ASSERT_GT(count, 0U);
  for (Strain strain : kSystemStrains) {
    for (strain.way = 0; strain.way < kWays; ++strain.way) {
      for (std::size_t n = 1; n <= count; ++n) {
        EXPECT_TRUE(Disturb(strain, n)) << n << " of " << count;
        ++Figures().calls;
        if (HasFailure()) return;
      }
    }
  }
}

std::vector<const Scenario*> Tortured() {
  std::vector<const Scenario*> scenarios;
  for (const auto& scenario : Scenarios())
    scenarios.push_back(scenario.get());
  return scenarios;
}

INSTANTIATE_TEST_SUITE_P(Scenarios, TortureTest, ::testing::ValuesIn(Tortured()),
                         [](const auto& tested) { return tested.param->name(); });

}  // namespace
}  // namespace brantel
