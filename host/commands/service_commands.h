#pragma once

#include <string>

#include "host/commands/command.h"
#include "host/outcome/command_failure.h"

namespace CLI {
class App;
}

namespace brantel::host {

// "service install": has Windows run a watch from its start on.
struct ServiceInstallCommand {
  static const CommandSyntax kSyntax;

  std::string file;  // the plan's, as given
};

// "service remove": ends that.
struct ServiceRemoveCommand {
  static const CommandSyntax kSyntax;
};

// "service start": starts the service now.
struct ServiceStartCommand {
  static const CommandSyntax kSyntax;
};

// "service stop": ends it until Windows starts once more.
struct ServiceStopCommand {
  static const CommandSyntax kSyntax;
};

// "service run": what the service does. Windows calls it so.
struct ServiceRunCommand {
  static const CommandSyntax kSyntax;

  std::string file;  // the plan's, in full
};

// The parser fills in `command`, which must outlive it.
void DeclareArguments(CLI::App& parser, ServiceInstallCommand& command);
void DeclareArguments(CLI::App& parser, ServiceRemoveCommand& command);
void DeclareArguments(CLI::App& parser, ServiceStartCommand& command);
void DeclareArguments(CLI::App& parser, ServiceStopCommand& command);
void DeclareArguments(CLI::App& parser, ServiceRunCommand& command);

// Each throws CommandFailure when the system refuses, or when the plan is wrong. What starts or
// stops the service returns when it has.
ExitCode Run(const ServiceInstallCommand& command, const CommandContext& context);
ExitCode Run(const ServiceRemoveCommand& command, const CommandContext& context);
ExitCode Run(const ServiceStartCommand& command, const CommandContext& context);
ExitCode Run(const ServiceStopCommand& command, const CommandContext& context);
ExitCode Run(const ServiceRunCommand& command, const CommandContext& context);

}  // namespace brantel::host
