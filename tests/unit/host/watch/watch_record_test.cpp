#include "host/watch/watch_record.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <string>
#include <vector>

namespace brantel::host {
namespace {

const PointInTime kNoted = *ParseTime("2026-11-22T03:12:09.123+01:00");

Decision SampleDecision() {
  return {.id = 12,
          .item = "w\xC3\xA4rme",
          .rule = "night",
          .instance = "Duty Mail",
          .kind = AlertKind::kRepeat,
          .incident = 7,
          .event = kServiceDown,
          .variables = {"n=web", "C=", "w=a \"quoted\"\nline"}};
}

std::vector<WatchEvent> SampleEvents() {
  return {
      StatusChange{"web", ItemStatus::kUp, "it answers", 7, {SampleDecision(), SampleDecision()}},
      StatusChange{"web", ItemStatus::kDown, "", 8, {}},
      AlertsDecided{{SampleDecision()}},
      AttemptBegun{12, 3, true},
      AttemptEnded{12, AlertEnd::kUncertain, true, "cut off"},
      AlertDropped{12, "given up"},
      Acknowledgement{"web", 7, "Ann"},
      ItemForgotten{"web"},
      NumbersTaken{13},
      WatchNote{"", "the clock was set"}};
}

TEST(WatchRecord, IsReadBackFromItsLine) {
  for (const WatchEvent& event : SampleEvents()) {
    const WatchRecord record{kNoted, event};
    const std::string line = WatchLine(record);
    EXPECT_EQ(line.find('\n'), line.size() - 1);
    EXPECT_EQ(ParseWatchLine(line), record) << line;
  }
}

TEST(WatchRecord, IsNotReadFromALineThatWasCutOff) {
  for (const WatchEvent& event : SampleEvents()) {
    const std::string line = WatchLine({kNoted, event});
    for (std::size_t size = 0; size + 1 < line.size(); ++size)
      EXPECT_FALSE(ParseWatchLine(line.substr(0, size))) << size << " bytes of " << line;
  }
}

TEST(WatchRecord, IsReadFromNothingElse) {
  const std::string time = R"({"time":"2026-11-22T03:12:09.123+01:00","what":)";
  for (const std::string& line : std::vector<std::string>{
           std::string("17"), std::string(R"({"time":"then","what":"forgotten","item":"web"})"),
           time + R"("nothing"})", time + R"("forgotten"})",
           time + R"("attempt","decision":-1,)" + R"("number":1,"may_be_doubled":false})",
           time + R"("attempt","decision":1,"number":9999999999,"may_be_doubled":false})",
           time + R"("status","item":"a","status":"dead","words":"","incident":0,"decisions":[]})",
           time + R"("decided","decisions":[17]})",
           time + R"("decided","decisions":[{"decision":0,"item":"","rule":"","instance":"",)" +
               R"("alert":"up","incident":0,"event":"item-up","variables":[]}]})",
           time + R"("decided","decisions":[{"decision":1,"item":"","rule":"","instance":"",)" +
               R"("alert":"up","incident":0,"event":"item-up","variables":["nothing"]}]})"})
    EXPECT_FALSE(ParseWatchLine(line)) << line;
}

TEST(WatchJournal, PassesOverWhatIsNoLine) {
  const std::string line = WatchLine({kNoted, ItemForgotten{"web"}});
  const WatchRecord record{kNoted, ItemForgotten{"web"}};
  EXPECT_THAT(ReadWatchLines(line + line.substr(0, 20) + "\n\n" + line),
              testing::ElementsAre(record, record));
  EXPECT_THAT(ReadWatchLines(""), testing::IsEmpty());
}

}  // namespace
}  // namespace brantel::host
