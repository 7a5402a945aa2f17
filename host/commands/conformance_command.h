#pragma once

#include <string>

#include "host/commands/command.h"
#include "host/outcome/command_failure.h"

namespace CLI {
class App;
}

namespace brantel::host {

// "conformance": tries the callback object of a host against the contract's rules.
struct ConformanceCommand {
  static const CommandSyntax kSyntax;

  std::string file;  // the library, as given, so it may be relative
};

// The parser fills in `command`, which must outlive it.
void DeclareArguments(CLI::App& parser, ConformanceCommand& command);

// kFailed when a rule is broken. Throws CommandFailure when the library cannot be tried.
ExitCode Run(const ConformanceCommand& command, const CommandContext& context);

}  // namespace brantel::host
