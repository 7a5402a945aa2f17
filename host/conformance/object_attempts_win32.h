#pragma once

#include "host/conformance/attempt_win32.h"

namespace brantel::host {

// What COM asks of every object: interfaces and references.
Seen TryInterface(const TriedLibrary& library);
Seen TryIdentity(const TriedLibrary& library);
Seen TryUnknownInterface(const TriedLibrary& library);
Seen TryReferences(const TriedLibrary& library);
Seen TryEnd(const TriedLibrary& library);

}  // namespace brantel::host
