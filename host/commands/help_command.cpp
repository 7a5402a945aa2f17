#include "host/commands/help_command.h"

#include <CLI/CLI.hpp>

#include "host/commands/shared_arguments.h"

namespace brantel::host {

const CommandSyntax HelpCommand::kSyntax = {"help", ModuleUse::kNone, ReportUse::kNone,
                                            "Show help, also of a command",
                                            "  notifyhost help send\n"
                                            "  notifyhost help settings set"};

void DeclareArguments(CLI::App& parser, HelpCommand& command) {
  DeclareNames(parser, "COMMAND", command.words, "Name of a command");
}

}  // namespace brantel::host
