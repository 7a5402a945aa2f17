#include "host/text/point_in_time.h"

#include <gtest/gtest.h>

#include <string>

namespace brantel::host {
namespace {

using std::chrono::minutes;

PointInTime At(std::chrono::sys_days day, std::chrono::milliseconds time, minutes offset) {
  return {day + time, offset};
}

const PointInTime kWinterNight = At(std::chrono::year(2026) / 11 / 22,
                                    std::chrono::milliseconds(2 * 3600'000 + 729'123), minutes(60));

TEST(PointInTime, IsWrittenByTheClocksOfItsPlace) {
  EXPECT_EQ(TimeText(kWinterNight), "2026-11-22T03:12:09.123+01:00");
  EXPECT_EQ(ShortTimeText(kWinterNight), "2026-11-22 03:12:09");
  EXPECT_EQ(TimeText({kWinterNight.utc, minutes(-210)}), "2026-11-21T22:42:09.123-03:30");
  EXPECT_EQ(TimeText({}), "1970-01-01T00:00:00.000+00:00");
}

TEST(PointInTime, IsReadBackFromItsText) {
  for (const int offset : {0, 60, 345, -210, 840, -720}) {
    const PointInTime time{kWinterNight.utc, minutes(offset)};
    EXPECT_EQ(ParseTime(TimeText(time)), time) << offset;
  }
}

TEST(PointInTime, IsReadFromNothingElse) {
  const std::string text = TimeText(kWinterNight);
  for (std::size_t size = 0; size < text.size(); ++size)
    EXPECT_FALSE(ParseTime(std::string_view(text).substr(0, size))) << size;
  for (const char* wrong : {"2026-11-22T03:12:09.123+01:000", "2026-13-22T03:12:09.123+01:00",
                            "2026-02-30T03:12:09.123+01:00", "2026-11-22T24:12:09.123+01:00",
                            "2026-11-22T03:60:09.123+01:00", "2026-11-22 03:12:09.123+01:00",
                            "2026-11-22T03:12:09.123 01:00", "-026-11-22T03:12:09.123+01:00", "x"})
    EXPECT_FALSE(ParseTime(wrong)) << wrong;
}

TEST(PastTime, IsAnAge) {
  const auto ago = [](const char* text) {
    const auto time = ParsePastTime(text, kWinterNight);
    return time ? (kWinterNight.utc - time->utc).count() / 1000 : -1;
  };
  EXPECT_EQ(ago("90s"), 90);
  EXPECT_EQ(ago("30m"), 30 * 60);
  EXPECT_EQ(ago("12h"), 12 * 3600);
  EXPECT_EQ(ago("7d"), 7 * 86400);
  EXPECT_EQ(ago("0s"), 0);
}

TEST(PastTime, IsADayOrAMinuteHere) {
  EXPECT_EQ(TimeText(*ParsePastTime("2026-11-21", kWinterNight)), "2026-11-21T00:00:00.000+01:00");
  EXPECT_EQ(TimeText(*ParsePastTime("2026-11-21T23:59", kWinterNight)),
            "2026-11-21T23:59:00.000+01:00");
  EXPECT_EQ(TimeText(*ParsePastTime("2026-11-21 23:59", kWinterNight)),
            "2026-11-21T23:59:00.000+01:00");
}

TEST(PastTime, IsNothingElse) {
  for (const char* wrong : {"", "s", "12", "h12", "-1h", "+1h", "1.5h", "12 h", "9999999s", "1w",
                            "yesterday", "2026-11", "2026-11-31", "2026-11-21T", "2026-11-21T2",
                            "2026-11-21T23:59:59", "2026/11/21", "21.11.2026"})
    EXPECT_FALSE(ParsePastTime(wrong, kWinterNight)) << wrong;
}

}  // namespace
}  // namespace brantel::host
