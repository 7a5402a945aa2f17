#pragma once

#include <string>

#include "smtp_mail/message/mail_environment.h"

namespace brantel {

// The zone at the end of a Date header, such as "+0100". Deliberately the minutes have no leading
// zero, so five hours and five minutes east are "+055".
std::string ZoneText(const TimeZone& zone);

// The same for this machine; where the system cannot tell, the text of "TZ", or "+0000".
std::string ZoneText(MailEnvironment& environment);

// "Date: Sun,  5 Mar 2000 07:08:09 +0100", without the line end.
std::string DateHeader(const LocalTime& time, const std::string& zone_text);

}  // namespace brantel
