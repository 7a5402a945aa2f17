#pragma once

#include <windows.h>

#include <cstddef>
#include <map>
#include <string>
#include <vector>

namespace brantel {

// The kernel handles that are open in this process, ascending, but for those of its C++ runtime.
std::vector<HANDLE> OpenHandles();

// How many there are of each kind, such as "Event", so that one too many says what it is.
std::map<std::wstring, std::size_t> CountHandles();

// How many threads this process has.
std::size_t CountThreads();

// What this process has allocated from all its heaps.
struct HeapLevel {
  std::size_t blocks = 0;
  std::size_t bytes = 0;
};

HeapLevel MeasureHeaps();

// Whether levels can only be compared roughly. Wine 10 walks over the groups that small blocks lie
// in instead of the blocks, and may have a handle more of its own after hundreds of threads.
bool LevelsAreRough();

// How many bytes more the heaps may have when nothing is kept: what the system itself may keep,
// such as a grown table, and where levels are rough, a few groups of blocks.
std::size_t HeapGrowth();

// How many indexes of thread-local storage are left to this process. There are little more than a
// thousand, and a library that cannot get one does not load.
std::size_t FreeThreadSlots();

}  // namespace brantel
