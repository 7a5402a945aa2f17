#pragma once

#include <windows.h>

namespace brantel {

// How long tests wait for what should come at once, in milliseconds: for a machine that is busy.
inline constexpr DWORD kPatience = 60000;

}  // namespace brantel
