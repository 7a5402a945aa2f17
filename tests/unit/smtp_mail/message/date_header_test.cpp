#include "smtp_mail/message/date_header.h"

#include <gtest/gtest.h>

#include <limits>
#include <string>
#include <string_view>

#include "tests/unit/smtp_mail/message/fake_mail_environment.h"

namespace brantel {
namespace {

constexpr LocalTime kTime{
    .year = 2004, .month = 3, .day_of_week = 5, .day = 25, .hour = 17, .minute = 28, .second = 59};

struct NamedNumber {
  unsigned number;
  std::string_view name;
};

TEST(DateHeader, NamesEveryDayOfTheWeek) {
  constexpr NamedNumber kDays[] = {{0, "Sun"}, {1, "Mon"}, {2, "Tue"}, {3, "Wed"},
                                   {4, "Thu"}, {5, "Fri"}, {6, "Sat"}};
  for (const NamedNumber& day : kDays) {
    LocalTime time = kTime;
    time.day_of_week = day.number;
    EXPECT_EQ(DateHeader(time, "+0100"),
              "Date: " + std::string(day.name) + ", 25 Mar 2004 17:28:59 +0100");
  }
}

TEST(DateHeader, NamesEveryMonth) {
  constexpr NamedNumber kMonths[] = {{1, "Jan"}, {2, "Feb"},  {3, "Mar"},  {4, "Apr"},
                                     {5, "May"}, {6, "Jun"},  {7, "Jul"},  {8, "Aug"},
                                     {9, "Sep"}, {10, "Oct"}, {11, "Nov"}, {12, "Dec"}};
  for (const NamedNumber& month : kMonths) {
    LocalTime time = kTime;
    time.month = month.number;
    EXPECT_EQ(DateHeader(time, "+0100"),
              "Date: Fri, 25 " + std::string(month.name) + " 2004 17:28:59 +0100");
  }
}

TEST(DateHeader, PadsTheDayWithABlankAndTheTimeWithZeros) {
  const LocalTime time{
      .year = 1999, .month = 12, .day_of_week = 0, .day = 5, .hour = 0, .minute = 3, .second = 7};
  EXPECT_EQ(DateHeader(time, "-0330"), "Date: Sun,  5 Dec 1999 00:03:07 -0330");
}

TEST(DateHeader, PutsAnyZoneBehindTheTime) {
  EXPECT_EQ(DateHeader(kTime, "EST5EDT"), "Date: Fri, 25 Mar 2004 17:28:59 EST5EDT");
  EXPECT_EQ(DateHeader(kTime, std::string(2000, 'z')),
            "Date: Fri, 25 Mar 2004 17:28:59 " + std::string(2000, 'z'));
}

struct Zone {
  std::int32_t bias;
  std::string_view text;
};

// Biases count westward, in minutes.
constexpr Zone kZones[] = {
    {0, "+0000"},
    {720, "-1200"},
    {660, "-1100"},
    {600, "-1000"},
    {570, "-0930"},
    {540, "-0900"},
    {480, "-0800"},
    {420, "-0700"},
    {360, "-0600"},
    {300, "-0500"},
    {270, "-0430"},
    {240, "-0400"},
    {210, "-0330"},
    {180, "-0300"},
    {120, "-0200"},
    {60, "-0100"},
    {-60, "+0100"},
    {-120, "+0200"},
    {-180, "+0300"},
    {-210, "+0330"},
    {-270, "+0430"},
    {-300, "+0500"},
    {-330, "+0530"},
    {-345, "+0545"},
    {-390, "+0630"},
    {-480, "+0800"},
    {-525, "+0845"},
    {-570, "+0930"},
    {-630, "+1030"},
    {-720, "+1200"},
    {-765, "+1245"},
    {-840, "+1400"},
    // Minutes have no leading zero, and less than an hour has both its zeros.
    {-305, "+055"},
    {305, "-055"},
    {-1, "+001"},
    {1, "-001"},
    {-30, "+0030"},
    {30, "-0030"},
    {-9, "+009"},
    {59, "-0059"},
};

TEST(ZoneText, WritesTheDistanceFromGreenwich) {
  for (const Zone& zone : kZones) {
    EXPECT_EQ(ZoneText(TimeZone{.bias = zone.bias}), zone.text) << zone.bias;
  }
}

TEST(ZoneText, AddsTheDaylightBiasWhileItIsOn) {
  EXPECT_EQ(ZoneText(TimeZone{.bias = -60, .daylight_bias = -60, .is_daylight_time = true}),
            "+0200");
  EXPECT_EQ(ZoneText(TimeZone{.bias = -60, .daylight_bias = -60, .is_daylight_time = false}),
            "+0100");
  EXPECT_EQ(ZoneText(TimeZone{.bias = 210, .daylight_bias = -60, .is_daylight_time = true}),
            "-0230");
  EXPECT_EQ(ZoneText(TimeZone{.bias = 30, .daylight_bias = -60, .is_daylight_time = true}),
            "+0030");
  EXPECT_EQ(ZoneText(TimeZone{.bias = 60, .daylight_bias = -60, .is_daylight_time = true}),
            "+0000");
}

TEST(ZoneText, TakesAnyNumbers) {
  constexpr std::int32_t kLeast = std::numeric_limits<std::int32_t>::min();
  EXPECT_EQ(ZoneText(TimeZone{.bias = kLeast, .daylight_bias = kLeast, .is_daylight_time = true}),
            "+7158278816");
}

TEST(ZoneText, IsThatOfTheVariableOnlyWhereTheSystemCannotTell) {
  FakeMailEnvironment environment;
  environment.zone = TimeZone{.bias = -330};
  environment.zone_variable = "EST5EDT";
  EXPECT_EQ(ZoneText(environment), "+0530");

  environment.zone.reset();
  EXPECT_EQ(ZoneText(environment), "EST5EDT");

  environment.zone_variable.reset();
  EXPECT_EQ(ZoneText(environment), "+0000");
}

}  // namespace
}  // namespace brantel
