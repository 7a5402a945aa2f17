#include "smtp_mail/message/mail_environment_win32.h"

#include <windows.h>

#include <cstdlib>

namespace brantel {

std::optional<TimeZone> SystemMailEnvironment::QueryTimeZone() {
  TIME_ZONE_INFORMATION information{};
  const DWORD id = GetTimeZoneInformation(&information);
  if (id == TIME_ZONE_ID_INVALID) return std::nullopt;
  return TimeZone{information.Bias, information.DaylightBias, id == TIME_ZONE_ID_DAYLIGHT};
}

std::optional<std::string> SystemMailEnvironment::TimeZoneVariable() {
  // NOLINTNEXTLINE(concurrency-mt-unsafe): the module changes no variable
  const char* const value = std::getenv("TZ");
  if (value == nullptr) return std::nullopt;
  return value;
}

LocalTime SystemMailEnvironment::Now() {
  SYSTEMTIME now{};
  GetLocalTime(&now);
  return {now.wYear, now.wMonth, now.wDayOfWeek, now.wDay, now.wHour, now.wMinute, now.wSecond};
}

unsigned SystemMailEnvironment::CodePage() {
  return GetACP();
}

}  // namespace brantel
