#pragma once

#include "host/commands/command.h"
#include "host/outcome/command_failure.h"

namespace CLI {
class App;
}

namespace brantel::host {

// "ports": lists the serial ports. It has no arguments.
struct PortsCommand {
  static constexpr CommandSyntax kSyntax = {"ports", ModuleUse::kNone, ReportUse::kReport,
                                            "List the serial ports and the profiles that use them",
                                            "  notifyhost ports"};
};

inline void DeclareArguments(CLI::App&, PortsCommand&) {}

// Prints a table of the ports: which are there, which are open elsewhere, and which profiles of
// which class name them. kNothingMatched when there is none.
ExitCode Run(const PortsCommand& command, const CommandContext& context);

}  // namespace brantel::host
