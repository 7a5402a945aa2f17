#pragma once

#include <optional>

#include "pager/centre/pager_call.h"
#include "pager/tap/tap_block.h"
#include "port/modem_port.h"
#include "port/serial_device.h"

namespace brantel {

// The kinds of the Telocator Alphanumeric Protocol, as far as they differ.
struct TapVariant {
  TapBlockRules block;
  // Set before each transmission of the block; otherwise those of the log-in stay.
  std::optional<SerialTimeouts> block_timeouts;
  // Whether the centre's RS, by which it refuses a page, deliberately counts as delivery.
  bool takes_rejection = false;
};

inline constexpr TapVariant kTap = {
    .block = {.skips_leading_zeros = false, .capacity = 250},
    .block_timeouts = std::nullopt,
    .takes_rejection = false,
};

// For centres of telephone messages. These take their time, and answer RS to what they deliver
// later.
inline constexpr TapVariant kSmsTap = {
    .block = {.skips_leading_zeros = true, .capacity = 160},
    .block_timeouts =
        SerialTimeouts{
            .read_interval = 1000, .read_total_constant = 35000, .write_total_constant = 10000},
    .takes_rejection = true,
};

// Delivers a page by TAP through a port that is open, and hangs up. True when the centre has taken
// it.
bool SendByTap(ModemPort& port, const PagerCall& call, const TapVariant& variant);

}  // namespace brantel
