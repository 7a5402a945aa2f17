#pragma once

#include <windows.h>

namespace brantel {

// How many nanoseconds pass while something is done once, on average over as many times as take a
// while.
template <typename Task>
double TimeOf(Task task) {
  constexpr double kWhile = 50e6;
  task();
  for (int rounds = 1;; rounds *= 2) {
    LARGE_INTEGER frequency;
    LARGE_INTEGER start;
    LARGE_INTEGER end;
    QueryPerformanceFrequency(&frequency);
    QueryPerformanceCounter(&start);
    for (int round = 0; round < rounds; ++round)
      task();
    QueryPerformanceCounter(&end);
    const double passed = static_cast<double>(end.QuadPart - start.QuadPart) * 1e9 /
                          static_cast<double>(frequency.QuadPart);
    if (passed >= kWhile) return passed / rounds;
  }
}

}  // namespace brantel
