#pragma once

#include <optional>
#include <string>

#include "host/checks/checked_system.h"

namespace brantel::host {

// What a modem answers to "AT" within two seconds. Nothing when its port cannot be opened and set
// up.
std::optional<std::string> AskModem(const LineSetup& setup);

}  // namespace brantel::host
