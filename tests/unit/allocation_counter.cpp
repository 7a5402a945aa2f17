#include "tests/unit/allocation_counter.h"

#include <atomic>
#include <cstdlib>
#include <new>

#include "tests/unit/failing_allocations.h"

namespace brantel {
namespace {

constinit std::atomic<std::size_t> allocated_bytes = 0;
// How many are left until one fails, with that one; 0: none will.
constinit std::atomic<std::size_t> until_failure = 0;
constinit std::atomic<int> uncounted_scopes = 0;

bool FailsNow() {
  if (uncounted_scopes != 0) return false;
  std::size_t left = until_failure;
  while (left != 0 && !until_failure.compare_exchange_weak(left, left - 1)) {
  }
  return left == 1;
}

// Stands before each block, which keeps its alignment.
struct alignas(std::max_align_t) BlockHeader {
  std::size_t size;
};

void* Allocate(std::size_t size) {
  void* const place =
      FailsNow() || FailsForTheLog() ? nullptr : std::malloc(sizeof(BlockHeader) + size);
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

void FailAllocation(std::size_t n) {
  until_failure = n;
}

bool WillFailAllocation() {
  return until_failure != 0;
}

MemoryOfOthers::MemoryOfOthers() {
  ++uncounted_scopes;
}

MemoryOfOthers::~MemoryOfOthers() {
  --uncounted_scopes;
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
