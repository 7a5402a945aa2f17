// Random courses of things that go up and down, of instances that get through or do not, and of a
// process that is ended at any moment. What must never happen is looked for in what was delivered
// and in the journal.
#include <gtest/gtest.h>

#include <algorithm>
#include <map>
#include <random>
#include <set>
#include <string>
#include <tuple>
#include <vector>

#include "tests/unit/host/watch/watched_world.h"
#include "tests/unit/thorough.h"

namespace brantel::host {
namespace {

using std::chrono::hours;
using std::chrono::minutes;
using std::chrono::seconds;

// A router, what lies behind it, and something by itself; two rules that share an instance.
WatchPlan RandomPlan() {
  WatchPlan plan = PlanOf({"router", "switch", "server", "web", "alone"});
  plan.items[1].depends_on = {0};
  plan.items[2].depends_on = {1};
  plan.items[3].depends_on = {2, 0};
  plan.items[3].kind = ItemKind::kService;
  plan.items[4].down_after = 1;
  plan.items[4].up_after = 1;
  plan.alerts = {{.name = "now", .instances = {"Mail", "Page"}, .repeat = minutes(7)},
                 {.name = "later",
                  .instances = {"Mail", "Call"},
                  .delay = minutes(5),
                  .retry = seconds(10),
                  .give_up = hours(2)}};
  for (WatchedItem& item : plan.items)
    item.alerts = {0, 1};
  plan.items[4].alerts = {0};
  plan.maintenance = {{.name = "backup",
                       .items = {2, 3},
                       .days = {true, true, true, true, true, true, true},
                       .from = minutes(190),
                       .to = minutes(210)}};
  return plan;
}

// What the journal says, looked at as a whole.
class JournalReview {
 public:
  explicit JournalReview(const std::vector<WatchRecord>& records) {
    for (const WatchRecord& record : records) {
      time_ = record.time;
      std::visit([&](const auto& event) { Take(event); }, record.event);
    }
  }

  // How often the decision may have got out by what the journal says.
  [[nodiscard]] int MostDeliveries(WatchNumber decision) const {
    const auto found = doubled_.find(decision);
    return 1 + (found == doubled_.end() ? 0 : found->second);
  }
  [[nodiscard]] const std::map<WatchNumber, Decision>& decisions() const { return decisions_; }
  [[nodiscard]] bool WasDropped(WatchNumber decision) const { return dropped_.contains(decision); }
  [[nodiscard]] bool WasDelivered(WatchNumber decision) const {
    return delivered_.contains(decision);
  }

 private:
  void Take(const StatusChange& change) {
    for (const Decision& decision : change.decisions)
      Take(decision);
    statuses_[change.item] = change.status;
    changes_[change.item] = ShortTimeText(time_);
  }
  void Take(const AlertsDecided& decided) {
    for (const Decision& decision : decided.decisions) {
      Take(decision);
      EXPECT_EQ(statuses_[decision.item], ItemStatus::kDown);
      EXPECT_TRUE(std::ranges::count(decision.variables, "t=" + changes_[decision.item]));
      EXPECT_FALSE(acknowledged_.contains(decision.incident)) << decision.item;
      for (const std::string& before : kBefore.at(decision.item))
        EXPECT_NE(statuses_[before], ItemStatus::kDown) << before << " " << decision.item;
    }
  }
  void Take(const Decision& decision) {
    EXPECT_TRUE(decisions_.emplace(decision.id, decision).second) << "the number is used again";
    const auto key = std::tuple(decision.incident, decision.rule, decision.instance, decision.kind);
    const bool is_new = once_.insert(key).second;
    EXPECT_TRUE(is_new || decision.kind == AlertKind::kRepeat)
        << "it is decided twice: " << decision.item;
  }
  void Take(const AttemptBegun& begun) {
    EXPECT_FALSE(delivered_.contains(begun.decision)) << "it is tried after its end";
    EXPECT_FALSE(dropped_.contains(begun.decision));
    if (begun.may_be_doubled) ++doubled_[begun.decision];
  }
  void Take(const AttemptEnded& ended) {
    if (ended.end == AlertEnd::kDelivered) delivered_.insert(ended.decision);
    if (ended.is_acknowledged) acknowledged_.insert(decisions_.at(ended.decision).incident);
  }
  void Take(const AlertDropped& dropped) {
    dropped_.insert(dropped.decision);
    // It is told as if for the first time when it would have been repeated.
    const Decision& decision = decisions_.at(dropped.decision);
    once_.erase({decision.incident, decision.rule, decision.instance, decision.kind});
  }
  void Take(const Acknowledgement& acknowledgement) {
    acknowledged_.insert(acknowledgement.incident);
  }
  void Take(const ItemForgotten&) {}
  void Take(const NumbersTaken&) {}
  void Take(const WatchNote&) {}

  const std::map<std::string, std::vector<std::string>> kBefore = {
      {"router", {}},
      {"switch", {"router"}},
      {"server", {"switch", "router"}},
      {"web", {"server", "switch", "router"}},
      {"alone", {}}};

  PointInTime time_;
  std::map<std::string, ItemStatus> statuses_;
  std::map<std::string, std::string> changes_;
  std::map<WatchNumber, Decision> decisions_;
  std::set<std::tuple<WatchNumber, std::string, std::string, AlertKind>> once_;
  std::set<WatchNumber> delivered_;
  std::set<WatchNumber> dropped_;
  std::set<WatchNumber> acknowledged_;
  std::map<WatchNumber, int> doubled_;
};

// What whoever is told through an instance sees of an item: never an up without its down.
void CheckOrder(const std::vector<Delivery>& deliveries) {
  std::set<std::tuple<std::string, std::string, WatchNumber>> told;
  for (const Delivery& delivery : deliveries) {
    const auto key = std::tuple(delivery.rule, delivery.instance, delivery.incident);
    if (delivery.kind == AlertKind::kDown)
      told.insert(key);
    else
      EXPECT_TRUE(told.contains(key)) << delivery.item << " through " << delivery.instance;
  }
}

void CheckCounts(const JournalReview& review, const std::vector<Delivery>& deliveries) {
  std::map<WatchNumber, int> counts;
  for (const Delivery& delivery : deliveries) {
    ++counts[delivery.decision];
    EXPECT_EQ(delivery.variables, review.decisions().at(delivery.decision).variables);
  }
  for (const auto& [id, decision] : review.decisions()) {
    if (review.WasDropped(id)) continue;
    EXPECT_TRUE(review.WasDelivered(id)) << "lost: " << decision.item;
    EXPECT_GE(counts[id], 1) << "lost: " << decision.item;
  }
  for (const auto& [id, count] : counts)
    EXPECT_LE(count, review.MostDeliveries(id)) << "doubled, and the journal does not say so";
}

// Lets the world go its random way for so long.
class RandomCourse {
 public:
  explicit RandomCourse(std::uint64_t seed) : chance_(seed), world_(RandomPlan(), seed) {
    world_.SetResources("Page", {"Pager", "COM1"});
    world_.SetResources("Call", {"Voice"});
    world_.SetResources("Mail", {"SMTPMail"});
    world_.SetAttemptTime(seconds(5));
  }

  void Go(int steps) {
    for (int i = 0; i < steps; ++i) {
      Change();
      world_.Run(seconds(OneOf(60)));
      CheckCompaction();
    }
  }

  // All is well in the end, and what was decided has had its time.
  void Settle() {
    world_.journal().LetLive();
    for (const char* item : kItems)
      world_.Set(item, true);
    for (const char* instance : kInstances)
      world_.SetInstance(instance, true);
    world_.Run(minutes(35));
  }

  WatchedWorld& world() { return world_; }

 private:
  // A journal that says the same in fewer lines leads to the same once more. Times by the clock
  // that nobody sets are left out, since the other one is set now and then.
  void CheckCompaction() {
    const Moment now = world_.Now();
    const auto records = world_.watch().memory().Records(now.wall);
    EXPECT_TRUE(RememberedBy(records, now).Records(now.wall) == records);
  }

  static constexpr std::array kItems = {"router", "switch", "server", "web", "alone"};
  static constexpr std::array kInstances = {"Mail", "Page", "Call"};

  int OneOf(int count) { return static_cast<int>(chance_() % static_cast<std::uint64_t>(count)); }

  void Change() {
    const std::string item = kItems.at(static_cast<std::size_t>(OneOf(5)));
    switch (OneOf(9)) {
      case 0:
      case 1:
        world_.Set(item, false);
        break;
      case 2:
      case 3:
        world_.Set(item, true);
        break;
      case 4:
        world_.Set(item, std::nullopt);
        break;
      case 5:
        world_.SetInstance(kInstances.at(static_cast<std::size_t>(OneOf(3))), OneOf(2) == 0);
        break;
      case 6:
      case 7:
        world_.journal().KillIn(OneOf(5) + 1, static_cast<JournalOnPaper::Cut>(OneOf(3)));
        break;
      default:
        Disturb(item);
        break;
    }
  }

  void Disturb(const std::string& item) {
    switch (OneOf(3)) {
      case 0:
        world_.Restart(seconds(OneOf(3600)));
        break;
      case 1:
        try {
          world_.watch().Acknowledge(item, "Ann", world_.Now());
        } catch (const Killed&) {
          world_.Restart();
        }
        break;
      default:
        world_.SetClock(seconds(OneOf(7200) - 3600));
        break;
    }
  }

  std::mt19937_64 chance_;
  WatchedWorld world_;
};

TEST(RandomWatch, LosesDoublesAndTurnsAroundNothing) {
  const std::size_t courses = IsThorough() ? 16 : 4;
  std::size_t restarts = 0;
  std::size_t deliveries = 0;
  for (std::uint64_t seed = 1; seed <= courses; ++seed) {
    SCOPED_TRACE("course " + std::to_string(seed));
    RandomCourse course(seed);
    course.Go(100);
    course.Settle();
    WatchedWorld& world = course.world();
    const JournalReview review(world.journal().AllRecords());
    CheckOrder(world.deliveries());
    CheckCounts(review, world.deliveries());
    EXPECT_TRUE(world.watch().memory().open().empty());
    restarts += static_cast<std::size_t>(world.restarts());
    deliveries += world.deliveries().size();
    if (HasFailure()) break;
  }
  // Otherwise it shows nothing.
  RecordProperty("restarts", std::to_string(restarts));
  EXPECT_GT(16 * restarts, 200 * courses);
  EXPECT_GT(deliveries, 50 * courses);
}

// Whatever else happens, who is to be told of what stays down is told.
TEST(RandomWatch, TellsOfWhateverStaysDown) {
  for (std::uint64_t seed = 1; seed <= 5; ++seed) {
    SCOPED_TRACE("course " + std::to_string(seed));
    RandomCourse course(seed);
    course.Go(40);
    course.Settle();
    WatchedWorld& world = course.world();
    world.TakeDeliveries();
    world.Set("router", false);
    world.Run(minutes(10));
    const auto told = world.TakeDeliveries();
    for (const char* instance : {"Mail", "Page", "Call"})
      EXPECT_EQ(std::ranges::count(told, std::string("down router through ") + instance),
                std::string("Mail") == instance ? 2 : 1);
    if (HasFailure()) break;
  }
}

}  // namespace
}  // namespace brantel::host
