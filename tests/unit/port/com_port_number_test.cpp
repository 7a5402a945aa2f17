#include "port/com_port_number.h"

#include <gtest/gtest.h>

namespace brantel {
namespace {

TEST(ComPortNumber, IsTheNumberBehindTheFirstCom) {
  EXPECT_EQ(ComPortNumber("COM1"), 1U);
  EXPECT_EQ(ComPortNumber("COM12"), 12U);
  EXPECT_EQ(ComPortNumber("the port COM3, then COM4"), 3U);
  EXPECT_EQ(ComPortNumber("COM2x5"), 2U);
  EXPECT_EQ(ComPortNumber("COMCOM5"), 0U);
}

TEST(ComPortNumber, IsZeroWhenNoDigitFollows) {
  EXPECT_EQ(ComPortNumber("COM"), 0U);
  EXPECT_EQ(ComPortNumber("COM 3"), 0U);
  EXPECT_EQ(ComPortNumber("COM-3"), 0U);
}

TEST(ComPortNumber, IsTheLargestForOneOutOfRange) {
  EXPECT_EQ(ComPortNumber("COM4294967295"), 4294967295U);
  EXPECT_EQ(ComPortNumber("COM99999999999"), 4294967295U);
}

TEST(ComPortNumber, IsNoneWithoutCom) {
  for (const std::string_view setting : {"", "1", "com1", "CO", "LPT1", "C OM1"}) {
    EXPECT_EQ(ComPortNumber(setting), std::nullopt) << setting;
  }
}

}  // namespace
}  // namespace brantel
