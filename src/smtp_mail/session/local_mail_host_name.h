#pragma once

#include <string>

#include "system/machine_name.h"

namespace brantel {

// The name by which this machine introduces itself to relays: the system's host name and domain,
// else the name that the sockets library knows, else "localhost". A domain that is set but empty
// deliberately leaves the full stop that would come before it.
std::string GetLocalMailHostName(MachineName& machine_name);

}  // namespace brantel
