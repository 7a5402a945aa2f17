#pragma once

#include <cstddef>

namespace brantel {

// Of what the test program has allocated with new, the bytes that it has not freed.
std::size_t AllocatedBytes();

// Makes the n-th new of the program from now on run out of memory, and no other; 0: none.
void FailAllocation(std::size_t n);
inline void FailNextAllocation() {
  FailAllocation(1);
}

// Whether the new that is to fail is still to come.
bool WillFailAllocation();

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
