#pragma once

#include <windows.h>

#include <vector>

namespace brantel {

// Takes note from now on of the events that the C++ runtime of the test program makes: one for a
// lock at which threads meet for the first time, whenever that is, and for each thread. They are
// nobody's leak. Throws std::runtime_error when the runtime makes its events in another way.
void WatchRuntimeEvents();

// Those that are open. None are known in a program that does not watch them.
std::vector<HANDLE> RuntimeEvents();

}  // namespace brantel
