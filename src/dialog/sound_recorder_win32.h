#pragma once

#include "dialog/sound_recorder.h"

namespace brantel {

class SystemRecorder final : public RecorderSystem {
 public:
  std::string ConfiguredRecorder() override;
  std::string SystemDirectory() override;
  bool Run(const std::string& command_line) override;
};

// Stateless, so that all use this one.
inline constinit SystemRecorder system_recorder;

}  // namespace brantel
