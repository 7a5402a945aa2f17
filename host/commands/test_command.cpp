#include "host/commands/test_command.h"

#include <CLI/CLI.hpp>

#include "host/commands/shared_arguments.h"

namespace brantel::host {

const CommandSyntax TestCommand::kSyntax = {
    "test", ModuleUse::kModule, ReportUse::kReport, "Deliver an alert of values that are not saved",
    "  notifyhost test Beeper beeper-number=5551234 down-code=911\n"
    "  notifyhost test Sound wave_filename=C:\\alarm.wav --timeout 10"};

void DeclareArguments(CLI::App& parser, TestCommand& command) {
  DeclareClass(parser, command.class_name);
  DeclareAssignments(parser, "FIELDS", "FIELD=VALUE", command.values,
                     "FIELD=VALUE for each field that is not to be empty\n"
                     "or 0, as new takes them; notifyhost fields lists the\n"
                     "fields of a class");
  DeclareFlag(parser, "--no-check", command.is_unchecked,
              "Try values also with which no alert would come to\n"
              "anything");
  DeclareAlertOptions(parser, command.options);
}

}  // namespace brantel::host
