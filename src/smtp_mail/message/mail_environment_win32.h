#pragma once

#include "smtp_mail/message/mail_environment.h"

namespace brantel {

class SystemMailEnvironment final : public MailEnvironment {
 public:
  std::optional<TimeZone> QueryTimeZone() override;
  std::optional<std::string> TimeZoneVariable() override;
  LocalTime Now() override;
  unsigned CodePage() override;
};

}  // namespace brantel
