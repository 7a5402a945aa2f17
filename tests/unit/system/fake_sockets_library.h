#pragma once

#include <string>
#include <vector>

#include "system/sockets_library.h"

namespace brantel {

// A sockets library that writes down in `calls` when it is started and stopped.
class FakeSocketsLibrary final : public SocketsLibrary {
 public:
  bool starts = true;
  std::vector<std::string>* calls = nullptr;

  bool Start() override {
    calls->emplace_back("start");
    return starts;
  }
  void Stop() noexcept override { calls->emplace_back("stop"); }
};

}  // namespace brantel
