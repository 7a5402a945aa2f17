#pragma once

#include <string>
#include <vector>

#include "system/sockets_library.h"
#include "tests/unit/allocation_counter.h"

namespace brantel {

// A sockets library that writes down in `calls` when it is started and stopped.
class FakeSocketsLibrary final : public SocketsLibrary {
 public:
  bool starts = true;
  std::vector<std::string>* calls = nullptr;

  bool Start() override {
    Note("start");
    return starts;
  }
  void Stop() noexcept override { Note("stop"); }

 private:
  void Note(const char* call) {
    const MemoryOfOthers others;
    calls->emplace_back(call);
  }
};

}  // namespace brantel
