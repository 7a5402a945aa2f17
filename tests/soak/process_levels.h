#pragma once

#include <cstddef>
#include <ostream>
#include <string>

#include "tests/module/process_level.h"

namespace brantel {

// What this process has taken of each kind.
struct ProcessLevels {
  std::size_t handles = 0;
  HeapLevel heaps;
  std::size_t committed = 0;     // bytes of its own memory, of the heaps and else
  std::size_t gdi_objects = 0;   // bitmaps, brushes and the like
  std::size_t user_objects = 0;  // windows, menus, icons
};

ProcessLevels MeasureProcess();

// "handles 40 -> 40, ..."
std::string Compared(const ProcessLevels& before, const ProcessLevels& after);

}  // namespace brantel
