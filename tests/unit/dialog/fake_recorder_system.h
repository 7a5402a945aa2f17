#pragma once

#include <string>
#include <vector>

#include "dialog/sound_recorder.h"

namespace brantel {

// A machine whose recorder and settings are what the test says.
class FakeRecorderSystem final : public RecorderSystem {
 public:
  std::string configured;
  bool succeeds = true;
  std::vector<std::string> command_lines;

  std::string ConfiguredRecorder() override { return configured; }
  std::string SystemDirectory() override { return "C:\\WINDOWS\\system32"; }
  bool Run(const std::string& command_line) override {
    command_lines.push_back(command_line);
    return succeeds;
  }
};

}  // namespace brantel
