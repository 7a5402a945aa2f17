#pragma once

#include <string>

#include "host/commands/command.h"
#include "host/outcome/command_failure.h"

namespace CLI {
class App;
}

namespace brantel::host {

// "history": tells what became of alerts.
struct HistoryCommand {
  static const CommandSyntax kSyntax;

  std::string directory;  // as given, so it may be relative; empty when none is
  std::string journal;    // likewise
  std::string since;      // empty for all
  bool is_failed_only = false;
  bool follows = false;
};

// The parser fills in `command`, which must outlive it.
void DeclareArguments(CLI::App& parser, HistoryCommand& command);

// Tells of the attempts that the journal names. kNothingMatched when there is none. Throws
// CommandFailure when `since` names no time.
ExitCode Run(const HistoryCommand& command, const CommandContext& context);

}  // namespace brantel::host
