#include "host/commands/unregister_command.h"

#include <CLI/CLI.hpp>

#include "host/commands/shared_arguments.h"

namespace brantel::host {

const CommandSyntax UnregisterCommand::kSyntax = {
    "unregister", ModuleUse::kModule, ReportUse::kReport, "Undo the registration",
    "  notifyhost unregister\n"
    "  notifyhost unregister --module C:\\Module\\Brantel_Notifications.dll\n"
    "  notifyhost unregister --force"};

void DeclareArguments(CLI::App& parser, UnregisterCommand& command) {
  DeclareFlag(parser, "--force", command.takes_any_copy,
              "Take out the registration of any other copy, too, and\n"
              "tell whose it was");
}

}  // namespace brantel::host
