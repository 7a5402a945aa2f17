#include "host/commands/history_command.h"

#include "host/commands/shared_arguments.h"

namespace brantel::host {

const CommandSyntax HistoryCommand::kSyntax = {
    "history", ModuleUse::kNone, ReportUse::kReport, "Tell what became of alerts",
    "  notifyhost history C:\\Instances --since 12h\n"
    "  notifyhost history C:\\Instances --failed --since 2026-11-22\n"
    "  notifyhost history --journal D:\\alerts.journal --follow --json"};

void DeclareArguments(CLI::App& parser, HistoryCommand& command) {
  DeclareOptionalPath(parser, "DIR", command.directory,
                      "Directory of instance files whose journal is told of.\n"
                      "Without it: the working directory");
  DeclareFlag(parser, "--failed", command.is_failed_only,
              "Only of alerts that were not delivered, or cut off\n"
              "before anybody knew");
  DeclareText(parser, "--since", "TIME", command.since,
              "Only of later ones: 90s, 30m, 12h or 7d ago, or since\n"
              "a day or minute such as 2026-11-22T03:12");
  DeclareFlag(parser, "--follow", command.follows, "Go on telling what comes, until Ctrl-C");
  DeclareJournal(parser, command.journal);
}

}  // namespace brantel::host
