#pragma once

#include <string>

namespace brantel {

// Starts programs.
class ProcessStarter {
 public:
  virtual ~ProcessStarter() = default;

  // Starts a program and does not wait for it. The command line alone names the program, split by
  // the system's own rules; an empty working directory means the caller's. False when it could not
  // be started.
  virtual bool Start(const std::string& command_line, const std::string& working_directory) = 0;

  // Whether a program can have this working directory.
  virtual bool CanStartIn(const std::string& working_directory) = 0;
};

}  // namespace brantel
