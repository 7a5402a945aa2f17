#include "host/commands/show_command.h"

#include <CLI/CLI.hpp>

#include "host/commands/shared_arguments.h"

namespace brantel::host {

const CommandSyntax ShowCommand::kSyntax = {"show", ModuleUse::kNone, ReportUse::kReport,
                                            "Show what an instance holds",
                                            "  notifyhost show C:\\Instances\\Night\n"
                                            "  notifyhost show Night --json"};

void DeclareArguments(CLI::App& parser, ShowCommand& command) {
  DeclareFile(parser, command.file, "Instance file of any class");
  DeclareShowSecrets(parser, command.shows_secrets);
}

}  // namespace brantel::host
