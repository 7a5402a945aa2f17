#pragma once

#include "host/commands/command.h"
#include "host/outcome/command_failure.h"

namespace CLI {
class App;
}

namespace brantel::host {

// "unregister": takes the module's classes out of the registry.
struct UnregisterCommand {
  static const CommandSyntax kSyntax;

  bool takes_any_copy = false;
};

// The parser fills in `command`, which must outlive it.
void DeclareArguments(CLI::App& parser, UnregisterCommand& command);

// Has the context's module file, or the one beside the host, undo its registration. Throws
// CommandFailure when that does not succeed, and when another copy is registered and not just any
// may be taken out. kNothingMatched where nothing is registered.
ExitCode Run(const UnregisterCommand& command, const CommandContext& context);

}  // namespace brantel::host
