#pragma once

#include "host/conformance/attempt_win32.h"

namespace brantel::host {

// What an object does that was made in an apartment of another thread, and is used there.
Seen TryWorker(const TriedLibrary& library);

}  // namespace brantel::host
