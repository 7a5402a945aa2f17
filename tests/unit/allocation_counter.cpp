#include "tests/unit/allocation_counter.h"

#include <atomic>
#include <cstdlib>
#include <new>

#include "tests/unit/failing_allocations.h"

namespace brantel {
namespace {

constinit std::atomic<std::size_t> allocated_bytes = 0;
constinit std::atomic<bool> fails_next = false;

// Stands before each block, which keeps its alignment.
struct alignas(std::max_align_t) BlockHeader {
  std::size_t size;
};

void* Allocate(std::size_t size) {
  const bool fails = fails_next.exchange(false) || FailsForTheLog();
  void* const place = fails ? nullptr : std::malloc(sizeof(BlockHeader) + size);
  if (place == nullptr) throw std::bad_alloc();
  allocated_bytes += size;
  return new (place) BlockHeader{size} + 1;
}

void Free(void* block) noexcept {
  if (block == nullptr) return;
  BlockHeader* const header = static_cast<BlockHeader*>(block) - 1;
  allocated_bytes -= header->size;
  std::free(header);
}

}  // namespace

std::size_t AllocatedBytes() {
  return allocated_bytes;
}

void FailNextAllocation() {
  fails_next = true;
}

}  // namespace brantel

// Those for arrays and with nothrow come here too.
void* operator new(std::size_t size) {
  return brantel::Allocate(size);
}

void operator delete(void* block) noexcept {
  brantel::Free(block);
}

void operator delete(void* block, std::size_t) noexcept {
  brantel::Free(block);
}
