#include "host/journal/journal_history.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "tests/unit/host/report/kept_text.h"

namespace brantel::host {
namespace {

JournalEntry Attempt(const std::string& id, const char* time) {
  return {.id = id,
          .began = *ParseTime(time),
          .command = "send",
          .class_name = "Pager",
          .instance = "C:\\Instances\\Night",
          .event = "trap",
          .machine = "WATCH",
          .process = 1};
}

JournalEntry Ended(JournalEntry entry, bool is_delivered, const std::string& verdict) {
  entry.end = JournaledEnd{
      .is_delivered = is_delivered, .verdict = verdict, .seconds = 71.26, .log = "ID=\r"};
  return entry;
}

const JournalEntry kBegun = Attempt("1", "2026-11-22T03:12:09.123+01:00");

class JournalHistoryTest : public testing::Test {
 protected:
  std::string Tell(const std::vector<JournalEntry>& entries, HistoryFilter filter = {},
                   ReportForm form = ReportForm::kText) {
    const KeptText kept;
    const ReportWriter report(kept, form, false);
    JournalHistory(report, filter, [&](const JournalEntry&) { return runs_still_; }).Tell(entries);
    return kept.text();
  }

  bool runs_still_ = false;
};

TEST_F(JournalHistoryTest, TellsWhatBecameOfEachAttempt) {
  JournalEntry unsaved = Ended(Attempt("3", "2026-11-22T03:14:00.000+01:00"), false, "no\x1B");
  unsaved.instance = "";
  EXPECT_EQ(Tell({Ended(kBegun, true, "the centre has it"),
                  Attempt("2", "2026-11-22T03:13:00.000+01:00"), unsaved}),
            "2026-11-22 03:12:09  delivered    71.3 s  Pager Night, trap: the centre has it\n"
            "2026-11-22 03:13:00  cut off   Pager Night, trap\n"
            "2026-11-22 03:14:00  failed       71.3 s  Pager, trap: no<1B>\n");
}

TEST_F(JournalHistoryTest, KnowsWhatStillRuns) {
  runs_still_ = true;
  EXPECT_EQ(Tell({kBegun}), "2026-11-22 03:12:09  running   Pager Night, trap\n");
  EXPECT_EQ(Tell({Ended(kBegun, false, "no")}),
            "2026-11-22 03:12:09  failed       71.3 s  Pager Night, trap: no\n");
}

TEST_F(JournalHistoryTest, TellsOfFailedOnesAlone) {
  const std::vector entries = {Ended(kBegun, true, "yes"),
                               Ended(Attempt("2", "2026-11-22T03:13:00.000+01:00"), false, "no"),
                               Attempt("3", "2026-11-22T03:14:00.000+01:00")};
  EXPECT_EQ(Tell(entries, {.is_failed_only = true}),
            "2026-11-22 03:13:00  failed       71.3 s  Pager Night, trap: no\n"
            "2026-11-22 03:14:00  cut off   Pager Night, trap\n");
}

TEST_F(JournalHistoryTest, ComparesTimesOfPlacesByWhenTheyWere) {
  const std::vector entries = {Attempt("1", "2026-11-22T03:12:09.123+01:00"),
                               Attempt("2", "2026-11-22T02:30:00.000+00:00")};
  EXPECT_EQ(Tell(entries, {.since = *ParseTime("2026-11-22T03:30:00.000+01:00")}),
            "2026-11-22 02:30:00  cut off   Pager Night, trap\n");
  EXPECT_EQ(Tell(entries, {.since = *ParseTime("2026-11-22T03:30:00.001+01:00")}), "");
}

TEST_F(JournalHistoryTest, TellsProgramsAllThereIs) {
  EXPECT_EQ(Tell({Ended(kBegun, true, "yes")}, {}, ReportForm::kJson),
            R"({"began":"2026-11-22T03:12:09.123+01:00","command":"send","class":"Pager",)"
            R"("instance":"C:\\Instances\\Night","event":"trap","state":"delivered",)"
            R"("seconds":71.26,"verdict":"yes","result":"","log":"ID=\r"})"
            "\n");
}

TEST(JournalHistory, TellsOfAnAttemptAgainOnlyWhenItStandsOtherwise) {
  const KeptText kept;
  const ReportWriter report(kept, ReportForm::kText, false);
  bool runs_still = true;
  JournalHistory history(report, {}, [&](const JournalEntry&) { return runs_still; });
  EXPECT_FALSE(history.has_told());
  history.Tell({kBegun});
  history.Tell({kBegun});
  runs_still = false;
  history.Tell({kBegun});
  history.Tell({Ended(kBegun, true, "yes")});
  history.Tell({Ended(kBegun, true, "yes")});
  EXPECT_TRUE(history.has_told());
  EXPECT_EQ(kept.text(),
            "2026-11-22 03:12:09  running   Pager Night, trap\n"
            "2026-11-22 03:12:09  cut off   Pager Night, trap\n"
            "2026-11-22 03:12:09  delivered    71.3 s  Pager Night, trap: yes\n");
}

}  // namespace
}  // namespace brantel::host
