#include "host/commands/doctor_command.h"

#include <CLI/CLI.hpp>

#include "host/commands/shared_arguments.h"

namespace brantel::host {

const CommandSyntax DoctorCommand::kSyntax = {
    "doctor", ModuleUse::kModule, ReportUse::kReport,
    "Find out what would keep alerts from being delivered",
    "  notifyhost doctor C:\\Instances\n"
    "  notifyhost doctor Night --online\n"
    "  notifyhost doctor C:\\Instances --json"};

void DeclareArguments(CLI::App& parser, DoctorCommand& command) {
  DeclareOptionalPath(parser, "PATH", command.path,
                      "Directory of instance files, or one of them. Without\n"
                      "it the classes alone are looked at");
  DeclareFlag(parser, "--online", command.goes_online,
              "Also ask mail relays for their greeting and modems for\n"
              "an OK, and open the telephone line. Nobody is alerted");
}

}  // namespace brantel::host
