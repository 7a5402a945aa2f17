#pragma once

#include "host/commands/command.h"
#include "host/outcome/command_failure.h"

namespace CLI {
class App;
}

namespace brantel::host {

// "classes": lists the module's notifier classes. It has no arguments.
struct ClassesCommand {
  static constexpr CommandSyntax kSyntax = {
      "classes", ModuleUse::kModule, ReportUse::kReport,
      "List the classes and whether they are registered",
      "  notifyhost classes\n"
      "  notifyhost classes --module C:\\Module\\Brantel_Notifications.dll"};
};

inline void DeclareArguments(CLI::App&, ClassesCommand&) {}

// Reads the context's module file, or the one beside the host. Throws CommandFailure when that does
// not succeed.
ExitCode Run(const ClassesCommand& command, const CommandContext& context);

}  // namespace brantel::host
