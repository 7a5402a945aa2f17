#include "tests/module/module_memory.h"

#include <cstdlib>

namespace brantel {
namespace {

ModuleMemory* memory = nullptr;

}  // namespace

ModuleMemory::ModuleMemory(HMODULE module)
    : patch_(module, "malloc", reinterpret_cast<void*>(&Allocate)) {
  memory = this;
}

ModuleMemory::~ModuleMemory() {
  memory = nullptr;
}

// Of the heap to which the module gives it back.
// NOLINTBEGIN(*-no-malloc)
void* ModuleMemory::Allocate(std::size_t size) {
  if (memory == nullptr) return std::malloc(size);
  if (memory->at_allocation) memory->at_allocation();
  return memory->FailsNext() ? nullptr : std::malloc(size);
}
// NOLINTEND(*-no-malloc)

bool ModuleMemory::FailsNext() {
  const std::size_t index = allocations++;
  return fails_at && (fails_for_good ? index >= *fails_at : index == *fails_at);
}

}  // namespace brantel
