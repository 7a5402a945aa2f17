#pragma once

#include <optional>

#include "port/modem_policy.h"

namespace brantel {

// How the Beeper goes about port and modem.
inline constexpr ModemPolicy kBeeperPolicy = {
    .busy_mark = 1,
    .rate_for_too_low = 1200,
    .opening_timeouts = SerialTimeouts{.read_total_constant = 2000, .write_total_constant = 10000},
    .initialisation_timeouts = std::nullopt,
    .bare_modem_string = "AT",
    .announces_attempts = true,
    .refuses_echo = false,
};

inline constexpr Framing kBeeperFraming = {8, Parity::kNone, std::nullopt};

}  // namespace brantel
