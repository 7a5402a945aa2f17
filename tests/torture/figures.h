#pragma once

#include <cstddef>

namespace brantel {

// How often something has been made to fail; told at the end of the program.
struct TortureFigures {
  std::size_t allocations = 0;
  std::size_t calls = 0;
  std::size_t cuts = 0;
};

TortureFigures& Figures();

}  // namespace brantel
