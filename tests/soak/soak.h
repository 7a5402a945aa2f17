// Alerts and dialogs by the thousand, and threads for minutes, with stand-ins for all that they go
// to; nothing may grow with the count, and no success may be false. The environment may say how
// much:
//   SOAK_SENDS     alerts of each class and protocol, 10000
//   SOAK_OPENINGS  openings of each dialog, 1000
//   SOAK_SECONDS   for which 16 threads send, 600
#pragma once

#include <gtest/gtest.h>

#include <string>

#include "tests/module/allocation_ledger.h"
#include "tests/soak/process_levels.h"

namespace brantel {

// A number that the environment says, or else this one.
unsigned Setting(const wchar_t* variable, unsigned otherwise);

// Compares what the process has taken when it is made and later, and prints it.
class GrowthWatch {
 public:
  // Growth that is none: what the system keeps meanwhile, such as a table that has grown.
  struct Tolerance {
    std::size_t handles = 0;
    std::size_t heap_bytes = 4096;
    std::size_t committed_bytes = 512 * 1024;
  };

  void ExpectNone(const std::string& what, const Tolerance& tolerance) const;
  void ExpectNone(const std::string& what) const { ExpectNone(what, Tolerance()); }

 private:
  ProcessLevels before_ = MeasureProcess();
  AllocationBalance balance_;
};

}  // namespace brantel
