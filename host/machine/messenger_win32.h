#pragma once

#include "host/checks/checked_system.h"

namespace brantel::host {

// Whether this computer has the network library's function that sends messages, and the service
// that it takes.
MessengerState StateOfMessenger();

}  // namespace brantel::host
