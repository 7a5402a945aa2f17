#pragma once

#include <string>

#include "host/preview/preview_part.h"
#include "launch_program/process_starter.h"

namespace brantel::host {

// Finds every program and starts none.
class PaperStarter final : public ProcessStarter {
 public:
  // The parts must outlive the object.
  explicit PaperStarter(PreviewParts& parts) : parts_(parts) {}

  bool Start(const std::string& command_line, const std::string& working_directory) override {
    parts_.push_back({.what = "command line", .bytes = command_line});
    parts_.push_back({.what = "folder", .bytes = working_directory});
    if (working_directory.empty()) parts_.back().words = "that of the host";
    return true;
  }

  bool CanStartIn(const std::string& /*working_directory*/) override { return true; }

 private:
  PreviewParts& parts_;
};

}  // namespace brantel::host
