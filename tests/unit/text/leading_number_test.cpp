#include "text/leading_number.h"

#include <gtest/gtest.h>

namespace brantel {
namespace {

TEST(LeadingNumber, ReadsTheNumberAtTheStart) {
  EXPECT_EQ(LeadingNumber("2400"), 2400);
  EXPECT_EQ(LeadingNumber(" \t9600 baud"), 9600);
  EXPECT_EQ(LeadingNumber("+5"), 5);
  EXPECT_EQ(LeadingNumber("-5"), -5);
  EXPECT_EQ(LeadingNumber("007x"), 7);
}

TEST(LeadingNumber, PassesOverWhiteSpaceOfEveryKind) {
  EXPECT_EQ(LeadingNumber("\r550 no"), 550);
  EXPECT_EQ(LeadingNumber(" \t\n\v\f\r-7"), -7);
  EXPECT_EQ(LeadingNumber("\x1C"
                          "7"),
            0);
  EXPECT_EQ(LeadingNumber("\x85"
                          "7"),
            0);
  EXPECT_EQ(LeadingNumber("\xA0"
                          "7"),
            0);
}

TEST(LeadingNumber, IsZeroWithoutANumber) {
  for (const std::string_view text : {"", " ", "fast", "x1", "-", "+", "+-5", "- 5", "0x10"}) {
    EXPECT_EQ(LeadingNumber(text), 0) << text;
  }
}

TEST(LeadingNumber, TakesTheNearestNumberForOneOutOfRange) {
  EXPECT_EQ(LeadingNumber("2147483647"), 2147483647);
  EXPECT_EQ(LeadingNumber("2147483648"), 2147483647);
  EXPECT_EQ(LeadingNumber("+4294967295"), 2147483647);
  EXPECT_EQ(LeadingNumber("99999999999999999999"), 2147483647);
  EXPECT_EQ(LeadingNumber("-2147483649"), -2147483647 - 1);
}

}  // namespace
}  // namespace brantel
