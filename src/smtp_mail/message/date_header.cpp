#include "smtp_mail/message/date_header.h"

#include <array>
#include <cstdint>
#include <cstdlib>
#include <string_view>

#include "text/format_text.h"

namespace brantel {
namespace {

constexpr std::array<std::string_view, 7> kDays = {"Sun", "Mon", "Tue", "Wed", "Thu", "Fri", "Sat"};
constexpr std::array<std::string_view, 12> kMonths = {"Jan", "Feb", "Mar", "Apr", "May", "Jun",
                                                      "Jul", "Aug", "Sep", "Oct", "Nov", "Dec"};

}  // namespace

std::string ZoneText(const TimeZone& zone) {
  // Whatever numbers the system holds, their sum has room here.
  const std::int64_t west =
      std::int64_t{zone.bias} + (zone.is_daylight_time ? zone.daylight_bias : 0);
  const auto hours = static_cast<std::uint32_t>(std::abs(west) / 60);
  const auto minutes = static_cast<std::uint32_t>(std::abs(west) % 60);
  const std::string_view sign = west > 0 ? "-" : "+";
  if (minutes == 0) return FormatText("%s%02d00", {sign, hours});
  return FormatText("%s%02d%d", {sign, hours, minutes});
}

std::string ZoneText(MailEnvironment& environment) {
  if (const auto zone = environment.QueryTimeZone()) return ZoneText(*zone);
  return environment.TimeZoneVariable().value_or("+0000");
}

std::string DateHeader(const LocalTime& time, const std::string& zone_text) {
  return FormatText("Date: %s, %2u %s %u %02d:%02d:%02d ",
                    {kDays.at(time.day_of_week), time.day, kMonths.at(time.month - 1), time.year,
                     time.hour, time.minute, time.second}) +
         zone_text;
}

}  // namespace brantel
