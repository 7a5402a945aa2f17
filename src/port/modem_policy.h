#pragma once

#include <cstdint>
#include <optional>
#include <string_view>

#include "port/serial_device.h"

namespace brantel {

// What the two modem notifiers do differently with port and modem.
struct ModemPolicy {
  // What the notifier object's port-busy flag holds while it has the port.
  std::uint32_t busy_mark = 0;
  // The rate in place of one below 300 bits per second.
  std::uint32_t rate_for_too_low = 0;
  // Set when the port is opened; otherwise each step sets its own.
  std::optional<SerialTimeouts> opening_timeouts;
  // Set before the modem is initialised.
  std::optional<SerialTimeouts> initialisation_timeouts;
  // Sent when no initialisation string is configured.
  std::string_view bare_modem_string;
  // Whether the log tells of each further attempt to get an OK.
  bool announces_attempts = false;
  // Whether a modem that still echoes commands is refused.
  bool refuses_echo = false;
};

}  // namespace brantel
