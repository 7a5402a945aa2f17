#pragma once

#include <string>

#include "host/commands/command.h"
#include "host/outcome/command_failure.h"

namespace CLI {
class App;
}

namespace brantel::host {

// "fields": tells of the fields of a class's instances.
struct FieldsCommand {
  static const CommandSyntax kSyntax;

  std::string class_name;
};

// The parser fills in `command`, which must outlive it.
void DeclareArguments(CLI::App& parser, FieldsCommand& command);

// Prints a table of the class's fields.
ExitCode Run(const FieldsCommand& command, const CommandContext& context);

}  // namespace brantel::host
