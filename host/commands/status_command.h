#pragma once

#include "host/commands/command.h"
#include "host/outcome/command_failure.h"

namespace CLI {
class App;
}

namespace brantel::host {

// "status": tells which module is registered. It has no arguments.
struct StatusCommand {
  static constexpr CommandSyntax kSyntax = {
      "status", ModuleUse::kModule, ReportUse::kReport,
      "Tell which module is registered, and of other copies",
      "  notifyhost status\n"
      "  notifyhost status --module C:\\Module\\Brantel_Notifications.dll"};
};

inline void DeclareArguments(CLI::App&, StatusCommand&) {}

// Prints what is known of the module that the host would register and of those that are registered.
// kNothingMatched when no class is registered.
ExitCode Run(const StatusCommand& command, const CommandContext& context);

}  // namespace brantel::host
