#pragma once

#include <optional>
#include <string>

#include "host/settings/line_setup.h"

namespace brantel::host {

// What a modem answers to "AT" within two seconds. Nothing when its port cannot be opened and set
// up.
std::optional<std::string> AskModem(const LineSetup& setup);

// Ends a call that is left over on the modem, by the standard escape and command. False when the
// port cannot be opened and set up within five seconds; a process that has just ended may still
// hold it.
bool HangUpModem(const LineSetup& setup);

}  // namespace brantel::host
