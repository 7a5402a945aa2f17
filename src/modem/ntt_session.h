#pragma once

#include "modem/modem_port.h"
#include "modem/pager_call.h"

namespace brantel {

// Delivers a page to NTT's paging service through a port that is open, and hangs up. True when the
// service has taken it.
bool SendByNtt(ModemPort& port, const PagerCall& call);

}  // namespace brantel
