#pragma once

#include <cstdint>

namespace brantel {

// What the system knows an event by, which a thread can wait for and another one sets.
using EventHandle = std::uintptr_t;
inline constexpr EventHandle kNoEvent = 0;

}  // namespace brantel
