#pragma once

#include <cstdint>
#include <optional>
#include <string_view>

#include "modem/serial_device.h"

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

// Fields: read interval, read total (multiplier, constant), write total (multiplier, constant).
inline constexpr ModemPolicy kBeeperPolicy = {
    .busy_mark = 1,
    .rate_for_too_low = 1200,
    .opening_timeouts = SerialTimeouts{0, 0, 2000, 0, 10000},
    .initialisation_timeouts = std::nullopt,
    .bare_modem_string = "AT",
    .announces_attempts = true,
    .refuses_echo = false,
};

inline constexpr ModemPolicy kPagerPolicy = {
    .busy_mark = 2,
    .rate_for_too_low = 300,
    .opening_timeouts = std::nullopt,
    .initialisation_timeouts = SerialTimeouts{2000, 0, 10000, 0, 10000},
    .bare_modem_string = "",
    .announces_attempts = false,
    .refuses_echo = true,
};

inline constexpr Framing kBeeperFraming = {8, Parity::kNone, std::nullopt};
inline constexpr Framing kPagerFraming7E1 = {7, Parity::kEven, true};
inline constexpr Framing kPagerFraming8N1 = {8, Parity::kNone, false};

}  // namespace brantel
