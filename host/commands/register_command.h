#pragma once

#include "host/commands/command.h"
#include "host/outcome/command_failure.h"

namespace CLI {
class App;
}

namespace brantel::host {

// "register": enters the module's classes into the registry. It has no arguments.
struct RegisterCommand {
  static constexpr CommandSyntax kSyntax = {
      "register", ModuleUse::kModule, ReportUse::kReport, "Register the classes with the system",
      "  notifyhost register\n"
      "  notifyhost register --module C:\\Module\\Brantel_Notifications.dll"};
};

inline void DeclareArguments(CLI::App&, RegisterCommand&) {}

// Registers the context's module file, or the one beside the host. Throws CommandFailure when that
// does not succeed.
ExitCode Run(const RegisterCommand& command, const CommandContext& context);

}  // namespace brantel::host
