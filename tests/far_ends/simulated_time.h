#pragma once

#include <windows.h>

#include "sim/timeline.h"
#include "tests/module/import_patch.h"

namespace brantel {

// Puts the calling thread on the time of a line while it lives: its waits make that time pass, by
// as much as was asked for, and what is due on the way happens.
class OnSimulatedTime {
 public:
  explicit OnSimulatedTime(sim::Timeline& time);
  OnSimulatedTime(const OnSimulatedTime&) = delete;
  OnSimulatedTime& operator=(const OnSimulatedTime&) = delete;
  ~OnSimulatedTime();

 private:
  sim::Timeline* const before_;
};

// Lets the module's own pauses pass on simulated time, while this lives. Those of a thread that is
// on no line's time are over at once.
class SimulatedPauses {
 public:
  explicit SimulatedPauses(HMODULE module);

 private:
  ImportPatch sleep_;
};

}  // namespace brantel
