#pragma once

#include <string>

#include "host/commands/command.h"
#include "host/outcome/command_failure.h"

namespace CLI {
class App;
}

namespace brantel::host {

// "instances": lists the instances in a directory.
struct InstancesCommand {
  static const CommandSyntax kSyntax;

  std::string directory;  // as given, so it may be relative
  bool shows_secrets = false;
};

// The parser fills in `command`, which must outlive it.
void DeclareArguments(CLI::App& parser, InstancesCommand& command);

// Prints a table of the files in the directory. kNothingMatched when it has none. Throws
// CommandFailure when there is no such directory.
ExitCode Run(const InstancesCommand& command, const CommandContext& context);

}  // namespace brantel::host
