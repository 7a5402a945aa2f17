#pragma once

#include <string>

#include "host/commands/command.h"
#include "host/outcome/command_failure.h"

namespace CLI {
class App;
}

namespace brantel::host {

// "watch": watches what a plan names, and alerts people.
struct WatchCommand {
  static const CommandSyntax kSyntax;

  std::string file;          // the plan's, as given
  bool is_check = false;     // look at the plan alone
  bool is_status = false;    // tell how it stands, by the journal
  std::string acknowledged;  // an item, if one is to be acknowledged
  std::string by;            // by whom
};

// The parser fills in `command`, which must outlive it.
void DeclareArguments(CLI::App& parser, WatchCommand& command);

// Watches until it is interrupted; or checks the plan with the instances that it names, kFailed
// when it would not do; or tells how it stands; or acknowledges, kNothingMatched when there is
// nothing to be acknowledged. Throws CommandFailure when the plan is wrong.
ExitCode Run(const WatchCommand& command, const CommandContext& context);

}  // namespace brantel::host
