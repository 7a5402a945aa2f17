#pragma once

#include "host/watch/network_loop.h"
#include "host/watch/watch_plan.h"

namespace brantel::host {

// Sends an echo request (ICMP, RFC 792) by IPv4 and waits for the reply, in a thread of the
// system's, which calls back.
void PingInThread(const ProbeRequest& request, NetworkLoop::ResultTaker take_result);

}  // namespace brantel::host
