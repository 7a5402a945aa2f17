#include "sim/dial_string.h"

#include <gtest/gtest.h>

namespace brantel::sim {
namespace {

// Tones as they are, pauses as commas, calls as the number in brackets.
std::string Steps(std::string_view text) {
  std::string steps;
  for (const DialStep& step : ParseDialString(text)) {
    switch (step.kind) {
      case DialStep::Kind::kTone:
        steps += step.tone;
        break;
      case DialStep::Kind::kPause:
        steps += ',';
        break;
      case DialStep::Kind::kCall:
        steps += '[' + step.number + ']';
        break;
    }
  }
  return steps;
}

TEST(ParseDialString, CallsAtTheFirstPauseOrAtTheEnd) {
  EXPECT_EQ(Steps("T5550100"), "5550100[5550100]");
  EXPECT_EQ(Steps("T5550100,,42#"), "5550100[5550100],,42#");
  EXPECT_EQ(Steps("5550100W42"), "5550100[5550100],42");
  EXPECT_EQ(Steps(""), "[]");
}

TEST(ParseDialString, TakesASingleDigitBeforeAPauseForAnOutsideLine) {
  EXPECT_EQ(Steps("T9,5550100,42#"), "9,5550100[5550100],42#");
  EXPECT_EQ(Steps("T,,5550100"), ",,5550100[5550100]");
}

TEST(ParseDialString, PassesOverWhatMeansNothing) {
  EXPECT_EQ(Steps("T(555) 01-00 up%"), "5550100[5550100]");
}

}  // namespace
}  // namespace brantel::sim
