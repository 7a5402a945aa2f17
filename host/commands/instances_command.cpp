#include "host/commands/instances_command.h"

#include <CLI/CLI.hpp>

#include "host/commands/shared_arguments.h"

namespace brantel::host {

const CommandSyntax InstancesCommand::kSyntax = {"instances", ModuleUse::kNone, ReportUse::kReport,
                                                 "List the instances in a directory",
                                                 "  notifyhost instances C:\\Instances"};

void DeclareArguments(CLI::App& parser, InstancesCommand& command) {
  DeclareDirectory(parser, command.directory);
  DeclareShowSecrets(parser, command.shows_secrets);
}

}  // namespace brantel::host
