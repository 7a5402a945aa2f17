#pragma once

#include <string>
#include <vector>

#include "host/conformance/conformance_check.h"

namespace brantel::host {

// Tries the callback objects of this library in a process of its own. Throws CommandFailure when
// the library cannot be tried.
std::vector<CheckResult> TryHost(const std::wstring& library);

}  // namespace brantel::host
