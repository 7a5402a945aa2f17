#pragma once

#include <string>
#include <vector>

#include "host/commands/command.h"
#include "host/instances/class_fields.h"
#include "host/outcome/command_failure.h"

namespace CLI {
class App;
}

namespace brantel::host {

// "new": writes an instance file.
struct NewCommand {
  static const CommandSyntax kSyntax;

  std::string class_name;
  std::string file;  // as given, so it may be relative
  std::vector<FieldValue> values;
  bool replaces = false;
  bool is_unchecked = false;
};

// The parser fills in `command`, which must outlive it.
void DeclareArguments(CLI::App& parser, NewCommand& command);

// Checks the values by doctor's rules and writes the file. Throws CommandFailure when that does not
// succeed, when the file exists and may not be replaced, and when a field cannot have its value.
ExitCode Run(const NewCommand& command, const CommandContext& context);

}  // namespace brantel::host
