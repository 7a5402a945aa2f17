#pragma once

#include <cstddef>

namespace brantel {

// Of what the test program has allocated with new, the bytes that it has not freed.
std::size_t AllocatedBytes();

// Makes the next new of the program run out of memory.
void FailNextAllocation();

}  // namespace brantel
