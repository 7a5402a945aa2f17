#include "host/alert/alert_event.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

namespace brantel::host {
namespace {

struct Reading {
  std::string text;
  AlertEvent event;
};

TEST(AlertEvent, HasTheTriggerWordOfItsName) {
  const std::vector<Reading> readings = {
      {"item-up", {1}},      {"item-down", {2}}, {"service-up", {4}},
      {"service-down", {8}}, {"trap", {16}},     {"none", {std::nullopt}},
  };
  EXPECT_EQ(NamedAlertEvents().size(), readings.size());
  for (const Reading& reading : readings) {
    EXPECT_EQ(ParseAlertEvent(reading.text), reading.event) << reading.text;
  }
}

TEST(AlertEvent, MayBeATriggerWord) {
  const std::vector<Reading> readings = {
      {"0", {0}},
      {"3", {3}},
      {"007", {7}},
      {"4294967295", {0xFFFFFFFFU}},
      {"0x0", {0}},
      {"0x10", {16}},
      {"0X1f", {31}},
      {"0xFFFFFFFF", {0xFFFFFFFFU}},
      {"0x00000000FFFFFFFF", {0xFFFFFFFFU}},
  };
  for (const Reading& reading : readings) {
    EXPECT_EQ(ParseAlertEvent(reading.text), reading.event) << reading.text;
  }
}

TEST(AlertEvent, IsNothingElse) {
  const std::vector<std::string> texts = {
      "",    "item",       "Item-Up", "item-up ", " 1",    "1 ",   "-1",
      "+1",  "4294967296", "0x",      "0xG",      "x10",   "10h",  "0x100000000",
      "1.0", "0x-1",       "1,2",     "٣",        "none1", "0x 1", "99999999999999999999",
  };
  for (const std::string& text : texts) {
    EXPECT_EQ(ParseAlertEvent(text), std::nullopt) << text;
  }
}

}  // namespace
}  // namespace brantel::host
