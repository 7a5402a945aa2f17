#include <gtest/gtest.h>

#include <optional>
#include <string>

#include "host/watch/duration_text.h"
#include "host/watch/http_address.h"
#include "host/watch/maintenance.h"

namespace brantel::host {
namespace {

using std::chrono::hours;
using std::chrono::milliseconds;
using std::chrono::minutes;
using std::chrono::seconds;

TEST(Duration, IsReadWithItsUnit) {
  EXPECT_EQ(ParseDuration("250ms"), milliseconds(250));
  EXPECT_EQ(ParseDuration("90s"), seconds(90));
  EXPECT_EQ(ParseDuration("5m"), minutes(5));
  EXPECT_EQ(ParseDuration("12h"), hours(12));
  EXPECT_EQ(ParseDuration("366d"), hours(366 * 24));
}

TEST(Duration, IsReadFromNothingElse) {
  for (const char* text : {"", "s", "5", "5 s", "-5s", "+5s", "5S", "1.5h", "367d", "5ss",
                           "99999999999999999999s", "9223372036854775807d", "0x5s"})
    EXPECT_FALSE(ParseDuration(text)) << text;
}

TEST(Duration, IsToldInItsLargestUnit) {
  EXPECT_EQ(DurationText(milliseconds(0)), "0 s");
  EXPECT_EQ(DurationText(milliseconds(1500)), "1500 ms");
  EXPECT_EQ(DurationText(seconds(90)), "90 s");
  EXPECT_EQ(DurationText(seconds(120)), "2 min");
  EXPECT_EQ(DurationText(hours(48)), "2 d");
}

TEST(HttpAddress, IsReadFromItsUrl) {
  using Address = HttpAddress;
  EXPECT_EQ(ParseHttpAddress("http://a"), (Address{"a", 80, "/"}));
  EXPECT_EQ(ParseHttpAddress("http://a:8080/b/c?d=e#f"), (Address{"a", 8080, "/b/c?d=e"}));
  EXPECT_EQ(ParseHttpAddress("http://a?b"), (Address{"a", 80, "/?b"}));
  EXPECT_EQ(ParseHttpAddress("http://[::1]:81/"), (Address{"::1", 81, "/"}));
  EXPECT_EQ(ParseHttpAddress("http://[::1]"), (Address{"::1", 80, "/"}));
}

TEST(HttpAddress, IsReadFromNothingElse) {
  for (const char* url :
       {"", "a", "http://", "http:///a", "https://a", "http://a:", "http://a:0", "http://a:65536",
        "http://a:8x", "http://a b", "http://a/\r\nHost: b", "http://me:secret@a/", "http://me@a",
        "http://[::1", "http://[::1]x", "http://a/\x7F", "http://\xC3\xA4/"})
    EXPECT_FALSE(ParseHttpAddress(url)) << url;
}

// 2026-11-22 is a Sunday.
PointInTime LocalTime(const std::string& minute, minutes offset = hours(1)) {
  return {ParseTime("2026-11-" + minute + ":00.000+00:00")->utc - offset, offset};
}

MaintenanceTime Weekly(std::array<bool, 7> days, minutes from, minutes to) {
  return {.days = days, .from = from, .to = to};
}

TEST(Maintenance, IsOnItsDaysFromTimeToTime) {
  const auto sunday = Weekly({true}, hours(2), hours(4));
  EXPECT_FALSE(IsWithin(sunday, LocalTime("22T01:59")));
  EXPECT_TRUE(IsWithin(sunday, LocalTime("22T02:00")));
  EXPECT_TRUE(IsWithin(sunday, LocalTime("22T03:59")));
  EXPECT_FALSE(IsWithin(sunday, LocalTime("22T04:00")));
  EXPECT_FALSE(IsWithin(sunday, LocalTime("23T03:00")));
  EXPECT_FALSE(IsWithin(sunday, LocalTime("21T03:00")));
}

TEST(Maintenance, GoesOnBeyondMidnight) {
  const auto saturday =
      Weekly({false, false, false, false, false, false, true}, hours(23), hours(4));
  EXPECT_FALSE(IsWithin(saturday, LocalTime("21T03:00")));
  EXPECT_TRUE(IsWithin(saturday, LocalTime("21T23:30")));
  EXPECT_TRUE(IsWithin(saturday, LocalTime("22T03:59")));
  EXPECT_FALSE(IsWithin(saturday, LocalTime("22T04:00")));
  EXPECT_FALSE(IsWithin(saturday, LocalTime("22T23:30")));
}

TEST(Maintenance, LastsAWholeDay) {
  const auto sunday = Weekly({true}, hours(0), hours(24));
  EXPECT_FALSE(IsWithin(sunday, LocalTime("21T23:59")));
  EXPECT_TRUE(IsWithin(sunday, LocalTime("22T00:00")));
  EXPECT_TRUE(IsWithin(sunday, LocalTime("22T23:59")));
  EXPECT_FALSE(IsWithin(sunday, LocalTime("23T00:00")));
}

TEST(Maintenance, GoesByTheClocksOfThePlace) {
  const auto sunday = Weekly({true}, hours(2), hours(4));
  PointInTime time = LocalTime("22T03:30", hours(2));
  EXPECT_TRUE(IsWithin(sunday, time));
  // The same moment, where it is early in the morning.
  time.offset = minutes(29);
  EXPECT_FALSE(IsWithin(sunday, time));
}

TEST(Maintenance, IsOnce) {
  const auto day = ParseTime("2026-11-22T00:00:00.000+00:00")->utc.time_since_epoch();
  const MaintenanceTime once{.begin = day + hours(2), .end = day + hours(4), .is_once = true};
  EXPECT_FALSE(IsWithin(once, LocalTime("22T01:59")));
  EXPECT_TRUE(IsWithin(once, LocalTime("22T02:00")));
  EXPECT_FALSE(IsWithin(once, LocalTime("22T04:00")));
  EXPECT_FALSE(IsWithin(once, LocalTime("29T03:00")));
}

TEST(Maintenance, IsOfItsItems) {
  MaintenanceTime sunday = Weekly({true}, hours(2), hours(4));
  sunday.name = "backup";
  sunday.items = {1};
  const WatchPlan plan{.items = {WatchedItem{}, WatchedItem{}}, .maintenance = {sunday}};
  EXPECT_EQ(MaintenanceOf(plan, 0, LocalTime("22T03:00")), "");
  EXPECT_EQ(MaintenanceOf(plan, 1, LocalTime("22T03:00")), "backup");
  EXPECT_EQ(MaintenanceOf(plan, 1, LocalTime("22T05:00")), "");
}

}  // namespace
}  // namespace brantel::host
