#pragma once

#include <cstdint>
#include <string>
#include <string_view>

#include "port/modem_port.h"

namespace brantel {

// How long a busy number is left alone, in milliseconds.
inline constexpr std::uint32_t kBusyWait = 3000;
inline constexpr std::uint32_t kBusyWaitNtt = 180000;

std::string DialCommand(std::string_view phone_number);

// Calls a paging centre and waits until its modem and ours are connected. A busy number is dialled
// again after `busy_wait` milliseconds, deliberately without end: the centre will be free some
// time, and the page is still wanted then. False, with the
// reason in the log, when the call fails in any other way.
bool DialCentre(ModemPort& port, std::string_view phone_number, std::uint32_t busy_wait);

}  // namespace brantel
