#pragma once

#include "host/conformance/attempt_win32.h"

namespace brantel::host {

// What GetAlertTrigger says of an event, and where there is none.
Seen TryEvent(const TriedLibrary& library);
Seen TryNoEvent(const TriedLibrary& library);

}  // namespace brantel::host
