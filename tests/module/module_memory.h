#pragma once

#include <windows.h>

#include <cstddef>
#include <functional>
#include <optional>

#include "tests/module/import_patch.h"

namespace brantel {

// Stands between the module and its heap while it lives. There can be one at a time, and the module
// must be used by one thread alone meanwhile.
class ModuleMemory {
 public:
  explicit ModuleMemory(HMODULE module);
  ModuleMemory(const ModuleMemory&) = delete;
  ModuleMemory& operator=(const ModuleMemory&) = delete;
  ~ModuleMemory();

  // Called before each allocation.
  std::function<void()> at_allocation;
  // The allocation, counted from 0, for which there is no memory.
  std::optional<std::size_t> fails_at;
  // Whether there is none for those behind it either.
  bool fails_for_good = false;
  std::size_t allocations = 0;

 private:
  bool FailsNext();
  static void* Allocate(std::size_t size);

  ImportPatch patch_;
};

}  // namespace brantel
