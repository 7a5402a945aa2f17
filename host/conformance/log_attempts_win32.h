#pragma once

#include "host/conformance/attempt_win32.h"

namespace brantel::host {

// What becomes of texts that are given to LogMessage.
Seen TryLogText(const TriedLibrary& library);
Seen TryLog(const TriedLibrary& library);

}  // namespace brantel::host
