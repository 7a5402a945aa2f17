#pragma once

#include <optional>

#include "port/modem_policy.h"

namespace brantel {

// How the Pager goes about port and modem.
inline constexpr ModemPolicy kPagerPolicy = {
    .busy_mark = 2,
    .rate_for_too_low = 300,
    .opening_timeouts = std::nullopt,
    .initialisation_timeouts =
        SerialTimeouts{
            .read_interval = 2000, .read_total_constant = 10000, .write_total_constant = 10000},
    .bare_modem_string = "",
    .announces_attempts = false,
    .refuses_echo = true,
};

inline constexpr Framing kPagerFraming7E1 = {7, Parity::kEven, true};
inline constexpr Framing kPagerFraming8N1 = {8, Parity::kNone, false};

}  // namespace brantel
