#pragma once

#include <cstddef>

namespace brantel {

// Of what the test program has allocated with new, the bytes that it has not freed, and in how many
// pieces.
std::size_t AllocatedBytes();
std::size_t AllocatedBlocks();

// Makes the n-th new of the program from now on run out of memory, and no other; 0: none.
void FailAllocation(std::size_t n);
inline void FailNextAllocation() {
  FailAllocation(1);
}

// The same, and all behind it run out of memory too.
void FailAllocationsFrom(std::size_t n);

// How many news there are up to the one that is to fail, with that; 0: none is to fail any more.
std::size_t AllocationsUntilFailure();

// Whether the new that is to fail is still to come.
bool WillFailAllocation();

// How many have failed so, since one was last told to.
std::size_t FailedAllocations();

// While there is one, no new fails and none is counted: for what stands in for something that takes
// no memory of the program's.
class MemoryOfOthers {
 public:
  MemoryOfOthers();
  MemoryOfOthers(const MemoryOfOthers&) = delete;
  MemoryOfOthers& operator=(const MemoryOfOthers&) = delete;
  ~MemoryOfOthers();
};

}  // namespace brantel
