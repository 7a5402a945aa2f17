#pragma once

#include <string>

#include "host/commands/command.h"
#include "host/outcome/command_failure.h"

namespace CLI {
class App;
}

namespace brantel::host {

// "doctor": finds out what would keep alerts from being delivered.
struct DoctorCommand {
  static const CommandSyntax kSyntax;

  std::string path;  // as given, so it may be relative; empty when none is
  bool goes_online = false;
};

// The parser fills in `command`, which must outlive it.
void DeclareArguments(CLI::App& parser, DoctorCommand& command);

// Looks at all classes and at the directory's instances, or at an instance and its class; without a
// path at the classes alone. kFailed when anything fails, kNothingMatched when a directory has no
// file. Throws CommandFailure when there is neither file nor directory.
ExitCode Run(const DoctorCommand& command, const CommandContext& context);

}  // namespace brantel::host
