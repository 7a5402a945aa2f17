#pragma once

#include "win_popup/worker_threads.h"

namespace brantel {

class SystemWorkerThreads final : public WorkerThreads {
 public:
  void Start(std::function<void()> work) override;
};

}  // namespace brantel
