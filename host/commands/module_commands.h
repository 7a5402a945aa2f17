#pragma once

#include "host/commands/command.h"
#include "host/outcome/command_failure.h"

namespace CLI {
class App;
}

namespace brantel::host {

// "classes": lists the module's notifier classes.
struct ClassesCommand {
  static const CommandSyntax kSyntax;
};

// "register": enters the module's classes into the registry.
struct RegisterCommand {
  static const CommandSyntax kSyntax;
};

// "unregister": takes them out again.
struct UnregisterCommand {
  static const CommandSyntax kSyntax;
};

// They have no arguments.
inline void DeclareArguments(CLI::App&, ClassesCommand&) {}
inline void DeclareArguments(CLI::App&, RegisterCommand&) {}
inline void DeclareArguments(CLI::App&, UnregisterCommand&) {}

// Runs the command on the context's module file, or on the one beside the host. Throws
// CommandFailure when that does not succeed.
ExitCode Run(const ClassesCommand& command, const CommandContext& context);
ExitCode Run(const RegisterCommand& command, const CommandContext& context);
ExitCode Run(const UnregisterCommand& command, const CommandContext& context);

}  // namespace brantel::host
