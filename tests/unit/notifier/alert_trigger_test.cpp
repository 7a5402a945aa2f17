#include "notifier/alert_trigger.h"

#include <gtest/gtest.h>

namespace brantel {
namespace {

std::optional<AlertKind> Kind(std::uint32_t word) {
  return ChooseAlertKind(word);
}

TEST(ChooseAlertKind, KnowsEachBit) {
  EXPECT_EQ(Kind(1), AlertKind::kUp);
  EXPECT_EQ(Kind(2), AlertKind::kDown);
  EXPECT_EQ(Kind(4), AlertKind::kUp);
  EXPECT_EQ(Kind(8), AlertKind::kDown);
  EXPECT_EQ(Kind(16), AlertKind::kTrap);
}

TEST(ChooseAlertKind, FindsNothingInOtherBits) {
  EXPECT_EQ(Kind(0), std::nullopt);
  EXPECT_EQ(Kind(32), std::nullopt);
  EXPECT_EQ(Kind(0xFFFFFFE0), std::nullopt);
}

TEST(ChooseAlertKind, TestsTheBitsInTheOrder1And2And16And4And8) {
  EXPECT_EQ(Kind(3), AlertKind::kUp);
  EXPECT_EQ(Kind(2 | 16), AlertKind::kDown);
  EXPECT_EQ(Kind(2 | 4), AlertKind::kDown);
  EXPECT_EQ(Kind(20), AlertKind::kTrap);
  EXPECT_EQ(Kind(8 | 16), AlertKind::kTrap);
  EXPECT_EQ(Kind(4 | 8), AlertKind::kUp);
  EXPECT_EQ(Kind(0xFFFFFFFF), AlertKind::kUp);
}

}  // namespace
}  // namespace brantel
