#include "host/watch/watch_words.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "tests/unit/host/watch/watched_world.h"

namespace brantel::host {
namespace {

// Keeps what is told.
class ToldText final : public TextSink {
 public:
  void Write(std::string_view text) const override { text_ += text; }
  [[nodiscard]] const std::string& text() const { return text_; }

 private:
  mutable std::string text_;
};

std::string Told(const WatchEvent& event, ReportForm form = ReportForm::kText) {
  const ToldText told;
  TellRecord(ReportWriter(told, form, false), {*ParseTime("2026-11-22T03:12:09.123+01:00"), event});
  return told.text();
}

const Decision kNightlyFall{.id = 12, .item = "web", .rule = "night", .instance = "Duty Mail"};

TEST(WatchWords, TellWhatHappens) {
  const std::string time = "2026-11-22 03:12:09  ";
  EXPECT_EQ(Told(StatusChange{"web", ItemStatus::kDown, "connection refused", 7, {}}),
            time + "web is down: connection refused\n");
  Decision back = kNightlyFall;
  back.kind = AlertKind::kUp;
  EXPECT_EQ(Told(StatusChange{"web", ItemStatus::kUp, "it answers 200", 7, {back}}),
            time + "web is up: it answers 200\n" + time +
                "alert 12: Duty Mail is to tell that web is up again\n");
  EXPECT_EQ(Told(AlertsDecided{{kNightlyFall}}),
            time + "alert 12: Duty Mail is to tell that web is down\n");
  EXPECT_EQ(Told(AttemptBegun{12, 1, false}), time + "alert 12: attempt 1\n");
  EXPECT_EQ(Told(AttemptBegun{12, 2, true}),
            time + "alert 12: attempt 2, though it may have got out before\n");
  EXPECT_EQ(Told(AttemptEnded{12, AlertEnd::kDelivered, true, "the key was pressed"}),
            time + "alert 12: delivered and acknowledged: the key was pressed\n");
  EXPECT_EQ(Told(AttemptEnded{12, AlertEnd::kFailed, false, "the relay refused it"}),
            time + "alert 12: failed: the relay refused it\n");
  EXPECT_EQ(Told(AttemptEnded{12, AlertEnd::kUncertain, false, ""}),
            time + "alert 12: nobody knows whether it got out\n");
  EXPECT_EQ(Told(AlertDropped{12, "it is backup"}), time + "alert 12 is dropped: it is backup\n");
  EXPECT_EQ(Told(Acknowledgement{"web", 7, "Ann\x1B[2J"}),
            time + "web: acknowledged by Ann<1B>[2J\n");
  EXPECT_EQ(Told(ItemForgotten{"web"}), time + "web is not watched any more\n");
  EXPECT_EQ(Told(WatchNote{"web", "nobody is told"}), time + "web: nobody is told\n");
  EXPECT_EQ(Told(WatchNote{"", "the watch ends"}), time + "the watch ends\n");
  EXPECT_EQ(Told(NumbersTaken{13}), "");
}

TEST(WatchWords, AreTheJournalsLinesForPrograms) {
  const WatchEvent event = AttemptBegun{12, 2, true};
  EXPECT_EQ(Told(event, ReportForm::kJson),
            WatchLine({*ParseTime("2026-11-22T03:12:09.123+01:00"), event}));
}

TEST(WatchWords, TellHowItStands) {
  WatchedWorld world(PlanOf({"new", "web"}));
  world.Set("web", false);
  world.SetInstance("Mail", false);
  world.Run(std::chrono::seconds(30));
  std::vector<ItemSnapshot> items = world.watch().Items(world.Now());
  items[0] = {.name = "new"};
  items[1].acknowledged_by = "Ann";
  items[1].since = *ParseTime("2026-11-22T03:12:09.123+01:00");
  const ToldText told;
  TellItems(ReportWriter(told, ReportForm::kText, false), items);
  TellOpenAlerts(ReportWriter(told, ReportForm::kText, false), world.watch().memory());
  EXPECT_EQ(told.text(),
            "STATUS   ITEM  SINCE                          WHY            REMARKS\n"
            "unknown  new   -                              -\n"
            "down     web   2026-11-22T03:12:09.123+01:00  it is refused  acknowledged by Ann; 1 "
            "alerts have not got through\n"
            "alert 2: Mail is to tell that web is down; attempt 1: refused\n");
}

}  // namespace
}  // namespace brantel::host
