#include "telephone/memory_blocks.h"

#include <algorithm>
#include <cstdlib>

namespace brantel {

// By calloc, since the system then takes zeros from where nothing is stored yet: a file that lies
// about a size of a gigabyte costs none.
// NOLINTBEGIN(*-no-malloc)

std::byte* SystemMemoryBlocks::Allocate(std::size_t size) noexcept {
  return static_cast<std::byte*>(std::calloc(std::max<std::size_t>(size, 1), 1));
}

void SystemMemoryBlocks::Free(std::byte* memory) noexcept {
  std::free(memory);
}

// NOLINTEND(*-no-malloc)

}  // namespace brantel
