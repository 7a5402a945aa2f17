#include "tests/unit/allocation_counter.h"

#include <atomic>
#include <cstdlib>
#include <new>

#include "tests/unit/failing_allocations.h"

namespace brantel {
namespace {

constinit std::atomic<std::size_t> allocated_bytes = 0;
constinit std::atomic<std::size_t> allocated_blocks = 0;
// How many are left until one fails, with that one; 0: none will.
constinit std::atomic<std::size_t> until_failure = 0;
constinit std::atomic<bool> fails_for_good = false;
constinit std::atomic<std::size_t> failures = 0;
constinit std::atomic<int> uncounted_scopes = 0;

bool FailsNow() {
  if (uncounted_scopes != 0) return false;
  const std::size_t last = fails_for_good ? 1 : 0;  // which stays
  std::size_t left = until_failure;
  while (left > last && !until_failure.compare_exchange_weak(left, left - 1)) {
  }
  if (left == 1) ++failures;
  return left == 1;
}

// Stands before each block, which keeps its alignment.
struct alignas(std::max_align_t) BlockHeader {
  std::size_t size;
};

// NOLINTBEGIN(*-no-malloc)
void* TryAllocate(std::size_t size) noexcept {
  void* const place =
      FailsNow() || FailsForTheLog() ? nullptr : std::malloc(sizeof(BlockHeader) + size);
  if (place == nullptr) return nullptr;
  allocated_bytes += size;
  ++allocated_blocks;
  return new (place) BlockHeader{size} + 1;
}

void* Allocate(std::size_t size) {
  void* const block = TryAllocate(size);
  if (block == nullptr) throw std::bad_alloc();
  return block;
}

void Free(void* block) noexcept {
  if (block == nullptr) return;
  BlockHeader* const header = static_cast<BlockHeader*>(block) - 1;
  allocated_bytes -= header->size;
  --allocated_blocks;
  std::free(header);
}
// NOLINTEND(*-no-malloc)

}  // namespace

std::size_t AllocatedBytes() {
  return allocated_bytes;
}

std::size_t AllocatedBlocks() {
  return allocated_blocks;
}

void FailAllocation(std::size_t n) {
  fails_for_good = false;
  failures = 0;
  until_failure = n;
}

void FailAllocationsFrom(std::size_t n) {
  FailAllocation(n);
  fails_for_good = true;
}

std::size_t AllocationsUntilFailure() {
  return until_failure;
}

bool WillFailAllocation() {
  return AllocationsUntilFailure() != 0;
}

std::size_t FailedAllocations() {
  return failures;
}

MemoryOfOthers::MemoryOfOthers() {
  ++uncounted_scopes;
}

MemoryOfOthers::~MemoryOfOthers() {
  --uncounted_scopes;
}

}  // namespace brantel

// All of them, since a sanitizer has its own in the place of those that are left out.

void* operator new(std::size_t size) {
  return brantel::Allocate(size);
}

void* operator new[](std::size_t size) {
  return brantel::Allocate(size);
}

void* operator new(std::size_t size, const std::nothrow_t&) noexcept {
  return brantel::TryAllocate(size);
}

void* operator new[](std::size_t size, const std::nothrow_t&) noexcept {
  return brantel::TryAllocate(size);
}

void operator delete(void* block) noexcept {
  brantel::Free(block);
}

void operator delete[](void* block) noexcept {
  brantel::Free(block);
}

void operator delete(void* block, std::size_t) noexcept {
  brantel::Free(block);
}

void operator delete[](void* block, std::size_t) noexcept {
  brantel::Free(block);
}

void operator delete(void* block, const std::nothrow_t&) noexcept {
  brantel::Free(block);
}

void operator delete[](void* block, const std::nothrow_t&) noexcept {
  brantel::Free(block);
}
