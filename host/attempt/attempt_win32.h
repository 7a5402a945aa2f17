#pragma once

#include <windows.h>

#include <chrono>
#include <functional>
#include <optional>
#include <string_view>

#include "host/alert/log_taker.h"
#include "host/attempt/alert_request.h"
#include "host/attempt/attempt.h"

namespace brantel::host {

// Delivers the alert in a process of its own, hands its log on as it comes, and ends it when the
// time limit, counted from now, has passed or the event `stop` is signalled. Throws CommandFailure
// when no process can be started.
AttemptOutcome RunAttempt(const AlertRequest& request,
                          std::optional<std::chrono::milliseconds> time_limit, HANDLE stop,
                          const LogTaker& take_log);

}  // namespace brantel::host
