#pragma once

#include <string>
#include <vector>

#include "host/commands/command.h"

namespace CLI {
class App;
}

namespace brantel::host {

// "help": shows the help of a command, or that of the whole program.
struct HelpCommand {
  static const CommandSyntax kSyntax;

  std::vector<std::string> words;  // the command's name
};

// The parser fills in `command`, which must outlive it.
void DeclareArguments(CLI::App& parser, HelpCommand& command);

}  // namespace brantel::host
