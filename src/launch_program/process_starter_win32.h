#pragma once

#include "launch_program/process_starter.h"

namespace brantel {

class SystemProcessStarter final : public ProcessStarter {
 public:
  bool Start(const std::string& command_line, const std::string& working_directory) override;
  bool CanStartIn(const std::string& working_directory) override;
};

}  // namespace brantel
