#pragma once

#include <string>
#include <vector>

#include "launch_program/process_starter.h"

namespace brantel {

// Starts nothing, and remembers what it was to start.
class FakeProcessStarter final : public ProcessStarter {
 public:
  bool succeeds = true;
  std::vector<std::string> command_lines;
  std::vector<std::string> working_directories;

  bool Start(const std::string& command_line, const std::string& working_directory) override {
    command_lines.push_back(command_line);
    working_directories.push_back(working_directory);
    return succeeds;
  }

  bool CanStartIn(const std::string& working_directory) override {
    working_directories.push_back(working_directory);
    return succeeds;
  }
};

}  // namespace brantel
