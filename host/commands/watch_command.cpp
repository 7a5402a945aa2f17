#include "host/commands/watch_command.h"

#include "host/commands/shared_arguments.h"

namespace brantel::host {

const CommandSyntax WatchCommand::kSyntax = {
    "watch", ModuleUse::kModule, ReportUse::kReport, "Watch services and devices, and alert people",
    "  notifyhost watch C:\\Watch\\night.toml --check\n"
    "  notifyhost watch C:\\Watch\\night.toml\n"
    "  notifyhost watch C:\\Watch\\night.toml --status --json\n"
    "  notifyhost watch C:\\Watch\\night.toml --acknowledge router --by Ann"};

void DeclareArguments(CLI::App& parser, WatchCommand& command) {
  DeclareFile(parser, command.file, "What is watched, how, and who is told: a TOML file");
  DeclareFlag(parser, "--check", command.is_check,
              "Look at the file and at the instances that it names,\n"
              "also whether they fit the items, and watch nothing");
  DeclareFlag(parser, "--status", command.is_status,
              "Tell how it stands with all items by the journal, and\n"
              "which alerts have not got through yet");
  DeclareText(parser, "--acknowledge", "ITEM", command.acknowledged,
              "Have nobody told any more that this item is down");
  DeclareText(parser, "--by", "NAME", command.by, "Who acknowledges it. Without it: the user");
}

}  // namespace brantel::host
