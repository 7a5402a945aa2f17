#include "host/commands/set_command.h"

#include <CLI/CLI.hpp>

#include "host/commands/shared_arguments.h"

namespace brantel::host {

const CommandSyntax SetCommand::kSyntax = {
    "set", ModuleUse::kNone, ReportUse::kReport, "Change fields of an instance without a dialog",
    R"(  notifyhost set Night "down code=911" "settings profile=1")"};

void DeclareArguments(CLI::App& parser, SetCommand& command) {
  DeclareFile(parser, command.file, "Instance file of any class");
  DeclareAssignments(parser, "FIELDS", "FIELD=VALUE", command.values,
                     "FIELD=VALUE for each field to change, as new takes\n"
                     "them. The others stay as they are");
  DeclareNoCheck(parser, command.is_unchecked);
}

}  // namespace brantel::host
