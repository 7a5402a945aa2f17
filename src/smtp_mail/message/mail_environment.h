#pragma once

#include <cstdint>
#include <optional>
#include <string>

namespace brantel {

// Minutes that are added to local time to give UTC, so they are positive west of Greenwich.
struct TimeZone {
  std::int32_t bias = 0;
  std::int32_t daylight_bias = 0;  // on top, while daylight saving time is on
  bool is_daylight_time = false;
};

struct LocalTime {
  unsigned year = 0;
  unsigned month = 1;        // from 1
  unsigned day_of_week = 0;  // from 0, Sunday
  unsigned day = 1;
  unsigned hour = 0;
  unsigned minute = 0;
  unsigned second = 0;
};

// What a mail session asks of the machine it runs on.
class MailEnvironment {
 public:
  virtual ~MailEnvironment() = default;

  // Nothing when the system cannot tell.
  virtual std::optional<TimeZone> QueryTimeZone() = 0;

  // The environment variable "TZ", if it is set.
  virtual std::optional<std::string> TimeZoneVariable() = 0;

  virtual LocalTime Now() = 0;

  // The ANSI code page, in which all texts are.
  virtual unsigned CodePage() = 0;
};

}  // namespace brantel
