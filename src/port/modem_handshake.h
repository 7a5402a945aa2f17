#pragma once

#include <string>
#include <string_view>

#include "port/modem_port.h"

namespace brantel {

// The initialisation string as it is sent, with a carriage return.
std::string InitialisationCommand(const ModemPolicy& policy, std::string_view modem_string);

// Sends the initialisation string to the modem and waits for its OK, which may come late, or only
// in answer to a plain "AT". Differences between the notifiers are in the port's policy. False when
// there is no OK, when the modem echoes although it must not, or when the port fails; the log says
// which.
bool InitialiseModem(ModemPort& port, std::string_view modem_string);

}  // namespace brantel
