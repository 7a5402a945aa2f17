#pragma once

#include <string>

#include "host/commands/command.h"

namespace CLI {
class App;
}

namespace brantel::host {

// "completion": shows the script by which a shell completes command lines.
struct CompletionCommand {
  static const CommandSyntax kSyntax;

  std::string shell;  // one of CompletionShells
};

// The parser fills in `command`, which must outlive it.
void DeclareArguments(CLI::App& parser, CompletionCommand& command);

}  // namespace brantel::host
