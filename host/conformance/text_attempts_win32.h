#pragma once

#include "host/conformance/attempt_win32.h"

namespace brantel::host {

// What becomes of texts that are given to ExpandMessage.
Seen TryTexts(const TriedLibrary& library);
Seen TryWords(const TriedLibrary& library);
Seen TryOldText(const TriedLibrary& library);

}  // namespace brantel::host
