#pragma once

#include "system/result.h"

namespace brantel {

// Runs every class's registry script in register mode, then registers the type library. Stops at
// the first failure and returns it; what is written by then stays.
Result RegisterModule();

// Removes what RegisterModule wrote, as far as it can, and returns the first failure. What is not
// there needs no removal and is no failure.
Result UnregisterModule();

}  // namespace brantel
