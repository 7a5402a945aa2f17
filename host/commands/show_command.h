#pragma once

#include <string>

#include "host/commands/command.h"
#include "host/outcome/command_failure.h"

namespace CLI {
class App;
}

namespace brantel::host {

// "show": shows what an instance file holds.
struct ShowCommand {
  static const CommandSyntax kSyntax;

  std::string file;  // as given, so it may be relative
  bool shows_secrets = false;
};

// The parser fills in `command`, which must outlive it.
void DeclareArguments(CLI::App& parser, ShowCommand& command);

// Prints the instance as its notifier reads it. Throws CommandFailure when no instance can be read,
// and also, after printing it, when the file is damaged.
ExitCode Run(const ShowCommand& command, const CommandContext& context);

}  // namespace brantel::host
