#include "host/journal/journal_entry.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

namespace brantel::host {
namespace {

JournalEntry BegunAttempt(const std::string& id) {
  return {.id = id,
          .began = *ParseTime("2026-11-22T03:12:09.123+01:00"),
          .command = "send",
          .class_name = "Beeper",
          .instance = "C:\\Instances\\Nacht ☎",
          .event = "item-down",
          .machine = "WATCH",
          .process = 4711};
}

JournalEntry EndedAttempt(const std::string& id) {
  JournalEntry entry = BegunAttempt(id);
  entry.end = JournaledEnd{.is_delivered = true,
                           .verdict = "dialled 5550100; \"nobody\" confirms a beep",
                           .result = "0x00000000 (S_OK)",
                           .seconds = 14.25,
                           .log = "ATDT\r\n\x1B[2J\x06"};
  return entry;
}

TEST(JournalEntry, IsReadBackFromItsLine) {
  for (const JournalEntry& entry : {BegunAttempt("1"), EndedAttempt("2")}) {
    const std::string line = JournalLine(entry);
    EXPECT_EQ(line.find('\n'), line.size() - 1);
    EXPECT_EQ(ParseJournalLine(line), entry);
  }
}

TEST(JournalEntry, IsReadFromNothingElse) {
  constexpr const char* kBegunAtNoTime =
      R"({"attempt":"1","began":"then","command":"send","class":"Beeper",)"
      R"("instance":"","event":"","machine":"","process":1})";
  for (const char* line : {"", "{", "[]", "{}", "17", R"({"attempt":"1"})", kBegunAtNoTime})
    EXPECT_FALSE(ParseJournalLine(line)) << line;
}

TEST(Journal, SaysTheLastOfEachAttemptInTheOrderOfTheirBeginnings) {
  const std::string content = JournalLine(BegunAttempt("1")) + JournalLine(BegunAttempt("2")) +
                              JournalLine(EndedAttempt("1")) + JournalLine(BegunAttempt("3"));
  EXPECT_EQ(ReadJournal(content),
            (std::vector{EndedAttempt("1"), BegunAttempt("2"), BegunAttempt("3")}));
}

// The part with its beginning may have been rotated away.
TEST(Journal, HasAnAttemptOfWhichItHoldsTheEndAlone) {
  EXPECT_EQ(ReadJournal(JournalLine(EndedAttempt("1"))), std::vector{EndedAttempt("1")});
}

TEST(Journal, DoesNotTakeAnEndBack) {
  EXPECT_EQ(ReadJournal(JournalLine(EndedAttempt("1")) + JournalLine(BegunAttempt("1"))),
            std::vector{EndedAttempt("1")});
}

// A host may be killed, or the disk be full, behind every byte.
TEST(Journal, CutOffAnywhereHasWhatWasWhole) {
  const std::string first = JournalLine(BegunAttempt("1"));
  const std::string content = first + JournalLine(EndedAttempt("1"));
  for (std::size_t size = 0; size <= content.size(); ++size) {
    const auto entries = ReadJournal(content.substr(0, size));
    // A line that lacks nothing but its end is whole.
    if (size + 1 < first.size()) {
      EXPECT_TRUE(entries.empty()) << size;
    } else if (size + 1 < content.size()) {
      EXPECT_EQ(entries, std::vector{BegunAttempt("1")}) << size;
    } else {
      EXPECT_EQ(entries, std::vector{EndedAttempt("1")}) << size;
    }
    // What is written after it begins a line of its own.
    const auto later = ReadJournal(content.substr(0, size) + "\n" + JournalLine(EndedAttempt("2")));
    ASSERT_FALSE(later.empty());
    EXPECT_EQ(later.back(), EndedAttempt("2")) << size;
  }
}

}  // namespace
}  // namespace brantel::host
