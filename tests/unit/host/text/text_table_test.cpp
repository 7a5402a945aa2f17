#include "host/text/text_table.h"

#include <gtest/gtest.h>

namespace brantel::host {
namespace {

using Rows = std::vector<std::vector<std::string>>;

TEST(TextTable, AlignsItsColumns) {
  EXPECT_EQ(
      FormatTextTable(Rows{{"Class", "Registered"}, {"LaunchProgram", "no"}, {"Voice", "yes"}}),
      "Class          Registered\n"
      "LaunchProgram  no\n"
      "Voice          yes\n");
}

TEST(TextTable, CountsCharactersAndNotBytes) {
  EXPECT_EQ(FormatTextTable(Rows{{"Zürich", "1"}, {"Berlin", "2"}, {"電話", "3"}}),
            "Zürich  1\n"
            "Berlin  2\n"
            "電話      3\n");
}

TEST(TextTable, LeavesNoBlanksAtTheEndOfALine) {
  EXPECT_EQ(FormatTextTable(Rows{{"a", ""}, {"", ""}, {"abc", "d"}}), "a\n\nabc  d\n");
}

TEST(TextTable, TakesRowsOfAnyLength) {
  EXPECT_EQ(FormatTextTable(Rows{}), "");
  EXPECT_EQ(FormatTextTable(Rows{{}, {"a"}, {"bb", "c", "d"}}), "\na\nbb  c  d\n");
}

}  // namespace
}  // namespace brantel::host
