#pragma once

#include "framework/sound_recorder.h"

namespace brantel {

class SystemRecorder final : public RecorderSystem {
 public:
  std::string ConfiguredRecorder() override;
  std::string SystemDirectory() override;
  bool Run(const std::string& command_line) override;
};

}  // namespace brantel
