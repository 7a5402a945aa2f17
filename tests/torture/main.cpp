#include <gtest/gtest.h>

#include <cstdio>

#include "tests/torture/figures.h"
#include "tests/torture/scenario.h"

namespace brantel {

TortureFigures& Figures() {
  static TortureFigures figures;
  return figures;
}

}  // namespace brantel

int main(int argc, char** argv) {
  ::testing::InitGoogleTest(&argc, argv);
  const int result = RUN_ALL_TESTS();
  const brantel::TortureFigures& figures = brantel::Figures();
  std::printf(
      "%zu scenarios; failed in turn: %zu allocations, %zu system calls; %zu sessions cut\n",
      brantel::Scenarios().size(), figures.allocations, figures.calls, figures.cuts);
  return result;
}
