#pragma once

#include <functional>

namespace brantel {

// Starts threads of the module's own.
class WorkerThreads {
 public:
  virtual ~WorkerThreads() = default;

  // Does the work in a new thread, for which nobody waits, and destroys it there. The module stays
  // in the process as long as the thread, whatever its host unloads; everything else that the work
  // uses it must hold itself. What the work throws ends it. Where no thread can be started the work
  // is not done.
  virtual void Start(std::function<void()> work) = 0;
};

}  // namespace brantel
