#pragma once

#include <cstddef>

namespace brantel {

// Runs out of memory while the module logs, and at no other time: the program compiles AlertLog
// with hooks at entry and exit of its functions. What its callees allocate counts too, so also what
// a host of the test's own does with a line.
class FailingLogAllocation {
 public:
  // One allocation fails: the one before which there were `index` others for the log. There can be
  // one object at a time.
  explicit FailingLogAllocation(std::size_t index);
  FailingLogAllocation(const FailingLogAllocation&) = delete;
  FailingLogAllocation& operator=(const FailingLogAllocation&) = delete;
  ~FailingLogAllocation();

  // Whether there have been so many.
  [[nodiscard]] bool HasFailed() const;
};

// Asked by operator new: whether this allocation is the one.
bool FailsForTheLog() noexcept;

// Calls `run` for each allocation that it makes for the log, to be without memory there.
template <typename Run>
void ForEachLogAllocation(Run run) {
  for (std::size_t index = 0;; ++index) {
    const FailingLogAllocation failing(index);
    run(index);
    if (!failing.HasFailed()) return;
  }
}

}  // namespace brantel
