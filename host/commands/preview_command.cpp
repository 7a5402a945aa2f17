#include "host/commands/preview_command.h"

#include <CLI/CLI.hpp>

#include "host/commands/shared_arguments.h"

namespace brantel::host {

const CommandSyntax PreviewCommand::kSyntax = {
    "preview", ModuleUse::kNone, ReportUse::kReport,
    "Show what an alert would send, without any device",
    "  notifyhost preview C:\\Instances\\Night\n"
    "  notifyhost preview Night --event service-up --set n=Router\n"
    "  notifyhost preview Office --json"};

void DeclareArguments(CLI::App& parser, PreviewCommand& command) {
  DeclareFile(parser, command.file, "Instance file of any class");
  DeclareEvent(parser, command.event);
  DeclareVariables(parser, command.variables);
  DeclareRawValues(parser, command.takes_raw_values);
  DeclareShowSecrets(parser, command.shows_secrets);
}

}  // namespace brantel::host
