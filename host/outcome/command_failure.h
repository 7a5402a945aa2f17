#pragma once

#include <stdexcept>
#include <string>

namespace brantel::host {

// What the host's process ends with; scripts go by it.
enum class ExitCode {
  kDone = 0,            // the alert was delivered, or the command did what it is for
  kFailed = 1,          // the command line was right, but that did not succeed
  kWrongUsage = 2,      // the command line is wrong, or a value that it gives
  kNothingMatched = 3,  // there was nothing of the kind that the command is about
};

// Ends a command with an exit code and a message for the person who gave it.
class CommandFailure : public std::runtime_error {
 public:
  CommandFailure(ExitCode exit_code, const std::string& message)
      : std::runtime_error(message), exit_code_(exit_code) {}

  [[nodiscard]] ExitCode exit_code() const { return exit_code_; }

 private:
  ExitCode exit_code_;
};

}  // namespace brantel::host
