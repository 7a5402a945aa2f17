#pragma once

#include <windows.h>

#include <cstddef>
#include <vector>

namespace brantel {

// The kernel handles that are open in this process, ascending.
std::vector<HANDLE> OpenHandles();

// What this process has allocated from all its heaps.
struct HeapLevel {
  std::size_t blocks = 0;
  std::size_t bytes = 0;
};

HeapLevel MeasureHeaps();

// How many indexes of thread-local storage are left to this process. There are little more than a
// thousand, and a library that cannot get one does not load.
std::size_t FreeThreadSlots();

}  // namespace brantel
