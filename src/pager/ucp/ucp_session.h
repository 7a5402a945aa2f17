#pragma once

#include <atomic>
#include <cstdint>

#include "pager/centre/pager_call.h"
#include "port/modem_port.h"

namespace brantel {

// Counts the messages of a process; each one's number modulo 100 is its transaction reference.
using UcpTransactionCounter = std::atomic<std::uint32_t>;

// Delivers a page by UCP through a port that is open. True when the centre has accepted it.
bool SendByUcp(ModemPort& port, const PagerCall& call, UcpTransactionCounter& counter);

}  // namespace brantel
