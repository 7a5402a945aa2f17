#pragma once

#include <windows.h>

namespace brantel {

// The handle of the loaded module itself, for its resources and its path. Set once, when the system
// loads the module, before any other code of it runs.
void SetModuleInstance(HINSTANCE instance) noexcept;
HINSTANCE ModuleInstance() noexcept;

}  // namespace brantel
