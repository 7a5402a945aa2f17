#pragma once

#include <optional>
#include <string>

#include "smtp_mail/message/mail_environment.h"

namespace brantel {

// A machine of which the test says what it is and when it is.
class FakeMailEnvironment final : public MailEnvironment {
 public:
  std::optional<TimeZone> zone = TimeZone{};
  std::optional<std::string> zone_variable;
  LocalTime now{
      .year = 2004, .month = 3, .day_of_week = 5, .day = 5, .hour = 7, .minute = 8, .second = 9};
  unsigned code_page = 1252;

  std::optional<TimeZone> QueryTimeZone() override { return zone; }
  std::optional<std::string> TimeZoneVariable() override { return zone_variable; }
  LocalTime Now() override { return now; }
  unsigned CodePage() override { return code_page; }
};

}  // namespace brantel
