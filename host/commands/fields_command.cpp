#include "host/commands/fields_command.h"

#include <CLI/CLI.hpp>

#include "host/commands/shared_arguments.h"

namespace brantel::host {

const CommandSyntax FieldsCommand::kSyntax = {"fields", ModuleUse::kNone, ReportUse::kReport,
                                              "Tell what the fields of a class's instances are for",
                                              "  notifyhost fields Beeper"};

void DeclareArguments(CLI::App& parser, FieldsCommand& command) {
  DeclareClass(parser, command.class_name);
}

}  // namespace brantel::host
