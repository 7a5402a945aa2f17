#pragma once

#include "pager/centre/pager_call.h"
#include "port/modem_port.h"

namespace brantel {

// Delivers a page to NTT's paging service through a port that is open, and hangs up. True when the
// service has taken it.
bool SendByNtt(ModemPort& port, const PagerCall& call);

}  // namespace brantel
