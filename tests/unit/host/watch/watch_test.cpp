#include "host/watch/watch.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "tests/unit/host/watch/watched_world.h"

namespace brantel::host {
namespace {

using std::chrono::hours;
using std::chrono::minutes;
using std::chrono::seconds;
using testing::Contains;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;

using Texts = std::vector<std::string>;

Texts NotesOf(WatchedWorld& world) {
  Texts notes;
  for (const WatchRecord& record : world.journal().AllRecords()) {
    if (const auto* note = std::get_if<WatchNote>(&record.event))
      notes.push_back((note->item.empty() ? "" : note->item + ": ") + note->words);
  }
  return notes;
}

template <typename Event>
std::vector<Event> EventsOf(WatchedWorld& world) {
  std::vector<Event> events;
  for (const WatchRecord& record : world.journal().AllRecords()) {
    if (const auto* event = std::get_if<Event>(&record.event)) events.push_back(*event);
  }
  return events;
}

TEST(Watch, TellsOfAFallAndOfTheReturn) {
  WatchedWorld world(PlanOf({"web"}));
  world.Run(minutes(1));
  EXPECT_EQ(world.Item("web").status, ItemStatus::kUp);
  EXPECT_THAT(world.TakeDeliveries(), IsEmpty());
  world.Set("web", false);
  world.Run(minutes(5));
  EXPECT_THAT(world.TakeDeliveries(), ElementsAre("down web through Mail"));
  world.Set("web", true);
  world.Run(minutes(5));
  EXPECT_THAT(world.TakeDeliveries(), ElementsAre("up web through Mail"));
}

TEST(Watch, TellsWhatHappenedAndWhen) {
  WatchPlan plan = PlanOf({"web"});
  plan.items[0].device = "server";
  WatchedWorld world(plan);
  world.Set("web", false);
  world.Run(seconds(30));
  ASSERT_EQ(world.deliveries().size(), 1U);
  const auto changed = ShortTimeText(world.Item("web").since);
  EXPECT_THAT(world.deliveries()[0].variables,
              ElementsAre("n=web", "d=server", "C=down, it is refused", "a=192.0.2.1:80", "u=down",
                          "t=" + changed, "w=it is refused"));
}

TEST(Watch, TellsTheCodeThatAnItemHas) {
  WatchPlan plan = PlanOf({"web"});
  plan.items[0].code = "17";
  WatchedWorld world(plan);
  world.Set("web", false);
  world.Run(seconds(30));
  ASSERT_EQ(world.deliveries().size(), 1U);
  EXPECT_THAT(world.deliveries()[0].variables, Contains("C=17"));
}

TEST(Watch, HasTheEventsOfItemsAndServices) {
  WatchPlan plan = PlanOf({"item", "service"});
  plan.items[1].kind = ItemKind::kService;
  WatchedWorld world(plan);
  world.Set("item", false);
  world.Set("service", false);
  world.Run(minutes(1));
  world.Set("item", true);
  world.Set("service", true);
  world.Run(minutes(1));
  std::map<std::string, AlertEvent> events;
  const auto note = [&](const Decision& decision) {
    events[decision.item + " " + std::string(AlertKindName(decision.kind))] = decision.event;
  };
  for (const auto& decided : EventsOf<AlertsDecided>(world))
    std::ranges::for_each(decided.decisions, note);
  for (const auto& change : EventsOf<StatusChange>(world))
    std::ranges::for_each(change.decisions, note);
  EXPECT_EQ(events, (std::map<std::string, AlertEvent>{{"item down", kItemDown},
                                                       {"item up", kItemUp},
                                                       {"service down", kServiceDown},
                                                       {"service up", kServiceUp}}));
}

TEST(Watch, TakesTheStatedNumberOfTries) {
  WatchPlan plan = PlanOf({"web"});
  plan.items[0].down_after = 4;
  WatchedWorld world(plan);
  world.Run(minutes(1));
  for (int i = 0; i < 20; ++i) {
    world.Set("web", false);
    world.Run(seconds(25));  // three tries at most
    world.Set("web", true);
    world.Run(seconds(25));
  }
  EXPECT_EQ(world.Item("web").status, ItemStatus::kUp);
  world.Set("web", false);
  world.Run(seconds(45));
  EXPECT_EQ(world.Item("web").status, ItemStatus::kDown);
  EXPECT_THAT(world.TakeDeliveries(), ElementsAre("down web through Mail"));
}

// Up at every other try, which is never two in a row either way.
TEST(Watch, StaysWithWhatWasWhileAnItemFlaps) {
  WatchedWorld world(PlanOf({"web"}));
  world.Run(minutes(1));
  int probes = world.probes();
  for (int i = 0; i < 1200; ++i) {
    world.Run(seconds(1));
    world.Set("web", (world.probes() - probes) % 2 == 0);
  }
  EXPECT_GT(world.probes(), 100);
  EXPECT_THAT(world.TakeDeliveries(), IsEmpty());
  world.Set("web", false);
  world.Run(minutes(1));
  EXPECT_THAT(world.TakeDeliveries(), ElementsAre("down web through Mail"));
  probes = world.probes();
  for (int i = 0; i < 1200; ++i) {
    world.Run(seconds(1));
    world.Set("web", (world.probes() - probes) % 2 == 0);
  }
  EXPECT_THAT(world.TakeDeliveries(), IsEmpty());
}

TEST(Watch, CountsWhatHangsAsDown) {
  WatchedWorld world(PlanOf({"web"}));
  world.Run(minutes(1));
  world.Set("web", std::nullopt);
  world.Run(minutes(1));
  EXPECT_EQ(world.Item("web").words, "no answer");
  EXPECT_THAT(world.TakeDeliveries(), ElementsAre("down web through Mail"));
}

TEST(Watch, TellsOfWhatWasNeverUp) {
  WatchedWorld world(PlanOf({"web"}));
  world.Set("web", false);
  world.Run(minutes(1));
  EXPECT_THAT(world.TakeDeliveries(), ElementsAre("down web through Mail"));
}

TEST(Watch, AnnouncesNothingThatWasKnownAtItsStart) {
  WatchedWorld world(PlanOf({"up", "down"}));
  world.Set("down", false);
  world.Run(minutes(1));
  world.TakeDeliveries();
  for (int i = 0; i < 5; ++i) {
    world.Restart();
    world.Run(minutes(5));
  }
  EXPECT_THAT(world.TakeDeliveries(), IsEmpty());
  world.Set("down", true);
  world.Restart(hours(1));
  world.Run(minutes(1));
  EXPECT_THAT(world.TakeDeliveries(), ElementsAre("up down through Mail"));
}

TEST(Watch, WaitsForTheDelay) {
  WatchPlan plan = PlanOf({"web"});
  plan.alerts[0].delay = minutes(3);
  WatchedWorld world(plan);
  world.Set("web", false);
  world.Run(minutes(3));
  EXPECT_THAT(world.TakeDeliveries(), IsEmpty());
  world.Run(minutes(1));
  EXPECT_THAT(world.TakeDeliveries(), ElementsAre("down web through Mail"));
}

TEST(Watch, TellsNothingOfWhatIsBackBeforeTheDelayIsOver) {
  WatchPlan plan = PlanOf({"web"});
  plan.alerts[0].delay = minutes(3);
  WatchedWorld world(plan);
  world.Set("web", false);
  world.Run(minutes(2));
  world.Set("web", true);
  world.Run(minutes(10));
  EXPECT_THAT(world.TakeDeliveries(), IsEmpty());
}

// The time that the watch was not there counts.
TEST(Watch, KeepsTheDelayOverARestart) {
  WatchPlan plan = PlanOf({"web"});
  plan.alerts[0].delay = hours(1);
  WatchedWorld world(plan);
  world.Set("web", false);
  world.Run(minutes(20));
  world.Restart(minutes(20));
  world.Run(minutes(15));
  EXPECT_THAT(world.TakeDeliveries(), IsEmpty());
  world.Run(minutes(6));
  EXPECT_THAT(world.TakeDeliveries(), ElementsAre("down web through Mail"));
}

TEST(Watch, RepeatsUntilUp) {
  WatchPlan plan = PlanOf({"web"});
  plan.alerts[0].repeat = minutes(10);
  WatchedWorld world(plan);
  world.Set("web", false);
  world.Run(minutes(31));
  EXPECT_THAT(world.TakeDeliveries(),
              ElementsAre("down web through Mail", "repeat web through Mail",
                          "repeat web through Mail", "repeat web through Mail"));
  EXPECT_EQ(world.deliveries()[0].variables, world.deliveries()[3].variables);
  world.Set("web", true);
  world.Run(hours(1));
  EXPECT_THAT(world.TakeDeliveries(), ElementsAre("up web through Mail"));
}

TEST(Watch, RepeatsUntilAcknowledged) {
  WatchPlan plan = PlanOf({"web"});
  plan.alerts[0].repeat = minutes(10);
  plan.alerts.push_back({.name = "later", .instances = {"Boss"}, .delay = minutes(30)});
  plan.items[0].alerts = {0, 1};
  WatchedWorld world(plan);
  EXPECT_FALSE(world.watch().Acknowledge("web", "Ann", world.Now()));
  world.Set("web", false);
  world.Run(minutes(11));
  EXPECT_THAT(world.TakeDeliveries(),
              ElementsAre("down web through Mail", "repeat web through Mail"));
  EXPECT_TRUE(world.watch().Acknowledge("web", "Ann", world.Now()));
  EXPECT_FALSE(world.watch().Acknowledge("web", "Bob", world.Now()));
  EXPECT_EQ(world.Item("web").acknowledged_by, "Ann");
  world.Run(minutes(30));
  world.Restart();
  world.Run(hours(1));
  EXPECT_THAT(world.TakeDeliveries(), IsEmpty());
  world.Set("web", true);
  world.Run(minutes(1));
  EXPECT_THAT(world.TakeDeliveries(), ElementsAre("up web through Mail"));
  // The next fall is another one.
  world.Set("web", false);
  world.Run(minutes(11));
  EXPECT_THAT(world.TakeDeliveries(),
              ElementsAre("down web through Mail", "repeat web through Mail"));
}

TEST(Watch, TakesTheAcknowledgementOfWhoeverIsTold) {
  WatchPlan plan = PlanOf({"web"});
  plan.alerts[0].repeat = minutes(10);
  plan.alerts[0].instances = {"Mail", "Call"};
  WatchedWorld world(plan);
  world.SetAcknowledging("Call");
  world.Set("web", false);
  world.Run(hours(1));
  EXPECT_THAT(world.TakeDeliveries(),
              testing::UnorderedElementsAre("down web through Mail", "down web through Call"));
  EXPECT_EQ(world.Item("web").acknowledged_by, "Call");
}

TEST(Watch, TakesTheAcknowledgementOfAnotherProcess) {
  WatchPlan plan = PlanOf({"web"});
  plan.alerts[0].repeat = minutes(10);
  WatchedWorld world(plan);
  world.Set("web", false);
  world.Run(minutes(5));
  const auto incident = world.watch().memory().ItemNamed("web").incident;
  world.watch().TakeForeign({world.Now().wall, Acknowledgement{"web", incident + 1, "Bob"}},
                            world.Now());
  EXPECT_EQ(world.Item("web").acknowledged_by, "");
  world.watch().TakeForeign({world.Now().wall, Acknowledgement{"web", incident, "Ann"}},
                            world.Now());
  EXPECT_EQ(world.Item("web").acknowledged_by, "Ann");
}

TEST(Watch, TellsNobodyDuringMaintenance) {
  WatchPlan plan = PlanOf({"web"});
  plan.alerts[0].repeat = minutes(5);
  // On Sunday from 3:30 to 4:30; it is 3:00.
  plan.maintenance = {{.name = "backup", .days = {true}, .from = minutes(210), .to = minutes(270)}};
  WatchedWorld world(plan);
  world.Run(minutes(31));
  world.Set("web", false);
  world.Run(minutes(58));
  EXPECT_EQ(world.Item("web").status, ItemStatus::kDown);
  EXPECT_EQ(world.Item("web").hold, "it is backup");
  EXPECT_EQ(world.Item("web").maintenance, "backup");
  EXPECT_THAT(world.TakeDeliveries(), IsEmpty());
  EXPECT_THAT(NotesOf(world), ElementsAre("web: nobody is told: it is backup"));
  world.Run(minutes(2));
  EXPECT_THAT(world.TakeDeliveries(), ElementsAre("down web through Mail"));
}

TEST(Watch, RepeatsNothingDuringMaintenance) {
  WatchPlan plan = PlanOf({"web"});
  plan.alerts[0].repeat = minutes(5);
  plan.maintenance = {{.name = "backup", .days = {true}, .from = minutes(210), .to = minutes(270)}};
  WatchedWorld world(plan);
  world.Run(minutes(27));
  world.Set("web", false);
  world.Run(minutes(2));
  EXPECT_THAT(world.TakeDeliveries(), ElementsAre("down web through Mail"));
  // A repeat that has failed is not tried again, either.
  world.Run(seconds(170));
  world.Run(minutes(50));
  EXPECT_THAT(world.TakeDeliveries(), IsEmpty());
  world.Run(minutes(10));
  EXPECT_THAT(world.TakeDeliveries(), Contains("repeat web through Mail"));
}

TEST(Watch, DropsARepeatThatHasFailedWhenMaintenanceBegins) {
  WatchPlan plan = PlanOf({"web"});
  plan.alerts[0].repeat = minutes(5);
  plan.maintenance = {{.name = "backup", .days = {true}, .from = minutes(210), .to = minutes(270)}};
  WatchedWorld world(plan);
  world.Run(minutes(20));
  world.Set("web", false);
  world.Run(minutes(2));
  world.SetInstance("Mail", false);
  world.Run(minutes(7));
  world.TakeDeliveries();
  world.Run(minutes(2));
  world.SetInstance("Mail", true);
  world.Run(minutes(50));
  EXPECT_THAT(world.TakeDeliveries(), IsEmpty());
  const auto dropped = EventsOf<AlertDropped>(world);
  ASSERT_EQ(dropped.size(), 1U);
  EXPECT_EQ(dropped[0].words, "it is backup");
}

TEST(Watch, TellsOfAReturnDuringMaintenanceIfItsFallWasTold) {
  WatchPlan plan = PlanOf({"told", "untold"});
  plan.maintenance = {{.name = "backup", .days = {true}, .from = minutes(210), .to = minutes(270)}};
  WatchedWorld world(plan);
  world.Run(minutes(20));
  world.Set("told", false);
  world.Run(minutes(15));
  EXPECT_THAT(world.TakeDeliveries(), ElementsAre("down told through Mail"));
  world.Set("untold", false);
  world.Run(minutes(5));
  world.Set("told", true);
  world.Set("untold", true);
  world.Run(minutes(5));
  EXPECT_THAT(world.TakeDeliveries(), ElementsAre("up told through Mail"));
}

WatchPlan PlanBehindARouter() {
  WatchPlan plan = PlanOf({"router", "server", "web"});
  plan.items[1].depends_on = {0};
  plan.items[2].depends_on = {1};
  return plan;
}

TEST(Watch, TellsOfWhatIsDeadAndNotOfWhatLiesBehindIt) {
  WatchedWorld world(PlanBehindARouter());
  world.Run(minutes(1));
  for (const char* item : {"router", "server", "web"})
    world.Set(item, false);
  world.Run(minutes(30));
  EXPECT_THAT(world.TakeDeliveries(), ElementsAre("down router through Mail"));
  for (const char* item : {"router", "server", "web"})
    EXPECT_EQ(world.Item(item).status, ItemStatus::kDown);
  EXPECT_EQ(world.Item("web").hold, "server is down");
  EXPECT_THAT(NotesOf(world), Contains("server: nobody is told: router is down"));
  for (const char* item : {"router", "server", "web"})
    world.Set(item, true);
  world.Run(minutes(30));
  EXPECT_THAT(world.TakeDeliveries(), ElementsAre("up router through Mail"));
}

// Whatever is looked at first, and by however much less often what is in front.
TEST(Watch, DoesNotTakeWhatLiesBehindForWhatIsDead) {
  for (std::uint64_t seed = 0; seed < 10; ++seed) {
    WatchPlan plan = PlanBehindARouter();
    plan.items[0].interval = minutes(5);
    plan.items[0].down_after = 5;
    plan.items[2].down_after = 1;
    WatchedWorld world(plan, seed);
    world.Run(minutes(1));
    for (const char* item : {"router", "server", "web"})
      world.Set(item, false);
    world.Run(minutes(40));
    EXPECT_THAT(world.TakeDeliveries(), ElementsAre("down router through Mail")) << seed;
  }
}

TEST(Watch, TellsOfWhatIsDeadByItselfWhileAllBeforeItIsAlive) {
  WatchedWorld world(PlanBehindARouter());
  world.Run(minutes(1));
  world.Set("web", false);
  world.Run(seconds(40));
  EXPECT_THAT(world.TakeDeliveries(), ElementsAre("down web through Mail"));
}

TEST(Watch, TellsOfWhatStaysDeadWhenWhatLiesBeforeItIsBack) {
  WatchedWorld world(PlanBehindARouter());
  world.Run(minutes(1));
  world.Set("router", false);
  world.Set("server", false);
  world.Set("web", false);
  world.Run(minutes(5));
  world.TakeDeliveries();
  world.Set("router", true);
  world.Set("web", true);
  world.Run(minutes(5));
  EXPECT_THAT(world.TakeDeliveries(),
              ElementsAre("up router through Mail", "down server through Mail"));
}

TEST(Watch, TellsOfAReturnBehindWhatIsDeadIfItsFallWasTold) {
  WatchPlan plan = PlanBehindARouter();
  plan.alerts[0].repeat = minutes(5);
  WatchedWorld world(plan);
  world.Run(minutes(1));
  world.Set("web", false);
  world.Run(minutes(2));
  EXPECT_THAT(world.TakeDeliveries(), ElementsAre("down web through Mail"));
  world.Set("server", false);
  world.Run(minutes(4));
  EXPECT_THAT(world.TakeDeliveries(), ElementsAre("down server through Mail"));
  // Repeats are held back, too.
  world.Set("web", true);
  world.Run(minutes(1));
  EXPECT_THAT(world.TakeDeliveries(), ElementsAre("up web through Mail"));
}

TEST(Watch, TriesAgainWithTheFirstDetailsAndGrowingPauses) {
  WatchedWorld world(PlanOf({"web"}));
  world.SetInstance("Mail", false);
  world.Set("web", false);
  world.Run(hours(2));
  EXPECT_THAT(world.TakeDeliveries(), IsEmpty());
  std::vector<std::int64_t> pauses;
  std::optional<PointInTime> last;
  for (const WatchRecord& record : world.journal().AllRecords()) {
    if (!std::holds_alternative<AttemptBegun>(record.event)) continue;
    if (last) pauses.push_back((record.time.utc - last->utc) / seconds(1));
    last = record.time;
  }
  ASSERT_GE(pauses.size(), 9U);
  pauses.resize(9);
  for (std::size_t i = 0; i < pauses.size(); ++i) {
    const std::int64_t expected = std::min(30 << i, 900);
    EXPECT_NEAR(static_cast<double>(pauses[i]), static_cast<double>(expected), 2) << i;
  }
  const auto fell = ShortTimeText(world.Item("web").since);
  world.SetInstance("Mail", true);
  world.Run(minutes(16));
  EXPECT_THAT(world.TakeDeliveries(), ElementsAre("down web through Mail"));
  EXPECT_THAT(world.deliveries()[0].variables, Contains("t=" + fell));
}

// The fall was decided to be told. It is told in its order, even when all is over.
TEST(Watch, TellsOfAFallThatDidNotGetThroughInTimeAndThenOfTheReturn) {
  WatchedWorld world(PlanOf({"web"}));
  world.SetInstance("Mail", false);
  world.Set("web", false);
  world.Run(minutes(5));
  world.Set("web", true);
  world.Run(minutes(5));
  EXPECT_THAT(world.TakeDeliveries(), IsEmpty());
  world.SetInstance("Mail", true);
  world.Run(minutes(30));
  EXPECT_THAT(world.TakeDeliveries(), ElementsAre("down web through Mail", "up web through Mail"));
}

TEST(Watch, TellsNoReturnWhereItGaveUpToTellOfTheFall) {
  WatchPlan plan = PlanOf({"web"});
  plan.alerts[0].give_up = hours(1);
  WatchedWorld world(plan);
  world.SetInstance("Mail", false);
  world.Set("web", false);
  world.Run(minutes(30));
  world.Set("web", true);
  world.Run(hours(2));
  world.SetInstance("Mail", true);
  world.Run(hours(2));
  EXPECT_THAT(world.TakeDeliveries(), IsEmpty());
  const auto dropped = EventsOf<AlertDropped>(world);
  ASSERT_EQ(dropped.size(), 2U);
  EXPECT_EQ(dropped[0].words, "nobody was told that it was down");
  EXPECT_THAT(dropped[1].words, HasSubstr("given up after "));
  EXPECT_THAT(world.watch().memory().open(), IsEmpty());
}

TEST(Watch, TellsOfTheFallWhenItWouldRepeatWhatItGaveUp) {
  WatchPlan plan = PlanOf({"web"});
  plan.alerts[0].give_up = hours(1);
  plan.alerts[0].repeat = hours(2);
  WatchedWorld world(plan);
  world.SetInstance("Mail", false);
  world.Set("web", false);
  world.Run(hours(2));
  world.SetInstance("Mail", true);
  world.Run(minutes(30));
  EXPECT_THAT(world.TakeDeliveries(), IsEmpty());
  world.Run(hours(1));
  EXPECT_THAT(world.TakeDeliveries(), ElementsAre("down web through Mail"));
}

TEST(Watch, TellsNoReturnOfWhatStayedDownWhileItGaveUp) {
  WatchPlan plan = PlanOf({"web"});
  plan.alerts[0].give_up = hours(1);
  WatchedWorld world(plan);
  world.SetInstance("Mail", false);
  world.Set("web", false);
  world.Run(hours(2));
  world.SetInstance("Mail", true);
  world.Restart();
  world.Set("web", true);
  world.Run(hours(2));
  EXPECT_EQ(world.Item("web").status, ItemStatus::kUp);
  EXPECT_THAT(world.TakeDeliveries(), IsEmpty());
}

TEST(Watch, KeepsOneInstanceFromDelayingAnother) {
  WatchPlan plan = PlanOf({"web"});
  plan.alerts[0].instances = {"Call", "Mail"};
  WatchedWorld world(plan);
  world.SetInstance("Call", false);
  world.Set("web", false);
  world.Run(minutes(1));
  EXPECT_THAT(world.TakeDeliveries(), ElementsAre("down web through Mail"));
}

TEST(Watch, SharesNoPortAndNoClass) {
  WatchPlan plan = PlanOf({"a", "b", "c", "d"});
  plan.alerts[0].instances = {"Beep", "Page", "Mail 1", "Mail 2"};
  WatchedWorld world(plan);
  world.SetResources("Beep", {"Beeper", "COM1"});
  world.SetResources("Page", {"Pager", "COM1"});
  world.SetResources("Mail 1", {"SMTPMail"});
  world.SetResources("Mail 2", {"SMTPMail"});
  world.SetAttemptTime(seconds(20));
  for (const char* item : {"a", "b", "c", "d"})
    world.Set(item, false);
  world.Run(minutes(10));
  EXPECT_EQ(world.TakeDeliveries().size(), 16U);
  EXPECT_EQ(world.most_attempts(), 2);
}

TEST(Watch, TriesWhatIsNewBeforeWhatHasFailed) {
  WatchPlan plan = PlanOf({"a", "b", "c"});
  plan.alerts[0].retry = seconds(1);
  plan.alerts[0].retry_most = seconds(1);
  WatchedWorld world(plan);
  world.SetAttemptTime(minutes(5));
  world.SetInstance("Mail", false);
  world.Set("a", false);
  world.Set("b", false);
  world.Run(minutes(6));
  world.Set("c", false);
  world.Run(minutes(30));
  std::vector<int> numbers;
  for (const AttemptBegun& begun : EventsOf<AttemptBegun>(world))
    numbers.push_back(begun.number);
  numbers.resize(4);
  EXPECT_THAT(numbers, ElementsAre(1, 1, 1, 2));
}

TEST(Watch, TakesUpWhatWasCutOffAndSaysSo) {
  WatchedWorld world(PlanOf({"web"}));
  world.SetAttemptTime(minutes(2));
  world.Set("web", false);
  world.Run(minutes(1));
  world.Restart();
  world.Run(minutes(5));
  const auto attempts = EventsOf<AttemptBegun>(world);
  ASSERT_EQ(attempts.size(), 2U);
  EXPECT_FALSE(attempts[0].may_be_doubled);
  EXPECT_TRUE(attempts[1].may_be_doubled);
  const auto ends = EventsOf<AttemptEnded>(world);
  ASSERT_EQ(ends.size(), 2U);
  EXPECT_EQ(ends[0].end, AlertEnd::kUncertain);
  EXPECT_EQ(ends[1].end, AlertEnd::kDelivered);
  world.Restart();
  world.Run(hours(1));
  EXPECT_EQ(EventsOf<AttemptBegun>(world).size(), 2U);
}

TEST(Watch, ForgetsWhatIsNotInThePlanAnyMore) {
  WatchedWorld world(PlanOf({"web", "mail"}));
  world.Set("web", false);
  world.Run(minutes(5));
  EXPECT_THAT(world.TakeDeliveries(), ElementsAre("down web through Mail"));
  world.ChangePlan(PlanOf({"mail"}));
  world.Run(minutes(5));
  EXPECT_EQ(world.watch().memory().items().count("web"), 0U);
  world.ChangePlan(PlanOf({"mail", "web"}));
  world.Set("web", true);
  world.Run(minutes(5));
  EXPECT_THAT(world.TakeDeliveries(), IsEmpty());
  EXPECT_EQ(world.Item("web").status, ItemStatus::kUp);
}

TEST(Watch, ForgetsAtItsStartWhatIsNotInThePlanAnyMore) {
  WatchedWorld world(PlanOf({"web", "mail"}));
  world.Set("web", false);
  world.Run(minutes(5));
  world.TakeDeliveries();
  world.SetNextPlan(PlanOf({"mail"}));
  world.Restart();
  world.Run(minutes(5));
  world.Set("web", true);
  world.SetNextPlan(PlanOf({"mail", "web"}));
  world.Restart();
  world.Run(minutes(5));
  EXPECT_THAT(world.TakeDeliveries(), IsEmpty());
  EXPECT_EQ(world.Item("web").status, ItemStatus::kUp);
}

TEST(Watch, GoesByAChangedPlanAndAnnouncesNothingForIt) {
  WatchedWorld world(PlanOf({"web", "mail"}));
  world.Set("web", false);
  world.Run(minutes(5));
  world.TakeDeliveries();
  WatchPlan plan = PlanOf({"new", "mail", "web"});
  plan.items[2].interval = minutes(1);
  world.Set("new", true);
  world.ChangePlan(plan);
  world.Run(minutes(10));
  EXPECT_THAT(world.TakeDeliveries(), IsEmpty());
  EXPECT_EQ(world.Item("new").status, ItemStatus::kUp);
  EXPECT_EQ(world.Item("web").status, ItemStatus::kDown);
  world.Set("web", true);
  world.Run(minutes(5));
  EXPECT_THAT(world.TakeDeliveries(), ElementsAre("up web through Mail"));
}

TEST(Watch, SaysWhenTheClockIsSet) {
  WatchedWorld world(PlanOf({"web"}));
  world.Run(minutes(1));
  world.SetClock(hours(1));
  world.Run(minutes(1));
  world.SetClock(minutes(59));
  world.Run(minutes(1));
  world.SetOffset(minutes(120));
  world.Run(minutes(1));
  EXPECT_THAT(NotesOf(world),
              ElementsAre("the clock was set forward by 1 h", "the clock was set back by 1 min",
                          "the clock's offset went from +01:00 to +02:00"));
}

TEST(Watch, IsNotMisledByAClockThatIsSet) {
  WatchPlan plan = PlanOf({"web"});
  plan.alerts[0].delay = minutes(10);
  plan.alerts[0].repeat = hours(1);
  WatchedWorld world(plan);
  world.Set("web", false);
  world.Run(minutes(1));
  world.SetClock(hours(10));
  world.Run(minutes(8));
  EXPECT_THAT(world.TakeDeliveries(), IsEmpty());
  world.Run(minutes(2));
  EXPECT_THAT(world.TakeDeliveries(), ElementsAre("down web through Mail"));
  world.SetClock(-hours(10));
  world.Run(minutes(58));
  EXPECT_THAT(world.TakeDeliveries(), IsEmpty());
  world.Run(minutes(3));
  EXPECT_THAT(world.TakeDeliveries(), ElementsAre("repeat web through Mail"));
}

TEST(Watch, KeepsTheScheduleOfAThousandItems) {
  std::vector<std::string> names;
  for (int i = 0; i < 1000; ++i)
    names.push_back("item " + std::to_string(i));
  WatchPlan plan = PlanOf(names);
  plan.parallel = 1000;
  for (WatchedItem& item : plan.items)
    item.interval = seconds(30);
  WatchedWorld world(plan);
  world.Run(minutes(2));
  EXPECT_LE(world.latest_probe(), seconds(3));
  EXPECT_NEAR(world.probes(), 4500, 550);
}

TEST(Watch, LooksAtNoMoreAtOnceThanItMay) {
  std::vector<std::string> names;
  for (int i = 0; i < 50; ++i)
    names.push_back("item " + std::to_string(i));
  WatchPlan plan = PlanOf(names);
  plan.parallel = 7;
  WatchedWorld world(plan);
  for (const std::string& name : names)
    world.Set(name, std::nullopt);
  world.Run(minutes(10));
  EXPECT_EQ(world.most_probes(), 7);
  for (const std::string& name : names)
    EXPECT_EQ(world.Item(name).status, ItemStatus::kDown) << name;
}

}  // namespace
}  // namespace brantel::host
