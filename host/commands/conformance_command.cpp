#include "host/commands/conformance_command.h"

#include <CLI/CLI.hpp>

#include "host/commands/shared_arguments.h"

namespace brantel::host {

const CommandSyntax ConformanceCommand::kSyntax = {
    "conformance", ModuleUse::kNone, ReportUse::kReport,
    "Try a host's callback object against the contract",
    "  notifyhost conformance C:\\Host\\Callback.dll\n"
    "  notifyhost conformance Callback.dll --json"};

void DeclareArguments(CLI::App& parser, ConformanceCommand& command) {
  DeclareFile(parser, command.file,
              "A library that exports MakeNotifierHost, of which\n"
              "brantel/host_conformance.h tells");
}

}  // namespace brantel::host
