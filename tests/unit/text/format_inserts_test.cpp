#include "text/format_inserts.h"

#include <gtest/gtest.h>

#include <string>

namespace brantel {
namespace {

TEST(FormatInserts, FillsInTextsAndNumbersByTheirPlace) {
  EXPECT_EQ(FormatInserts("sending msg via %1!s! to %2!s!\r\n", {"192.0.2.25", "ann"}),
            "sending msg via 192.0.2.25 to ann\r\n");
  EXPECT_EQ(FormatInserts("%2!u! before %1!s!", {"ann", 7U}), "7 before ann");
  EXPECT_EQ(FormatInserts("%1!u! %1!u!", {4294967295U}), "4294967295 4294967295");
  EXPECT_EQ(FormatInserts("no insert", {"ann"}), "no insert");
  EXPECT_EQ(FormatInserts("", {}), "");
}

TEST(FormatInserts, FollowsTheDirectiveBetweenTheMarks) {
  EXPECT_EQ(FormatInserts("%1!04X!", {255U}), "00FF");
  EXPECT_EQ(FormatInserts("[%1!5s!][%1!-5s!][%1!.2s!]", {"ann"}), "[  ann][ann  ][an]");
}

TEST(FormatInserts, InsertsTextsOfAnyLengthWhole) {
  const std::string text(5000, 'x');
  EXPECT_EQ(FormatInserts("<%1!s!>", {text}), "<" + text + ">");
}

TEST(FormatInserts, DoesNotLookForInsertsInWhatItInserts) {
  EXPECT_EQ(FormatInserts("%1!s! %2!s!", {"%2!s!", "b%%"}), "%2!s! b%%");
}

TEST(FormatInserts, InsertsNothingForAMissingArgument) {
  EXPECT_EQ(FormatInserts("a%1!s!b%9!u!c", {}), "abc");
}

TEST(FormatInserts, TakesADoubledPercentSignForOne) {
  EXPECT_EQ(FormatInserts("100%% of %%1!s!", {"x"}), "100% of %1!s!");
}

TEST(FormatInserts, KeepsPercentSignsThatBeginNoInsert) {
  EXPECT_EQ(FormatInserts("%", {"x"}), "%");
  EXPECT_EQ(FormatInserts("%1", {"x"}), "%1");
  EXPECT_EQ(FormatInserts("%1!s", {"x"}), "%1!s");
  EXPECT_EQ(FormatInserts("%0!s!", {"x"}), "%0!s!");
  EXPECT_EQ(FormatInserts("%s %d", {"x"}), "%s %d");
}

}  // namespace
}  // namespace brantel
