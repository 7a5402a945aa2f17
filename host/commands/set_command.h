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

// "set": changes fields of an instance.
struct SetCommand {
  static const CommandSyntax kSyntax;

  std::string file;  // as given, so it may be relative
  std::vector<FieldValue> values;
  bool is_unchecked = false;
};

// The parser fills in `command`, which must outlive it.
void DeclareArguments(CLI::App& parser, SetCommand& command);

// Checks the instance with its new values by doctor's rules and writes it. Throws CommandFailure
// when no instance can be read, when that does not succeed, and when a field cannot have its value.
ExitCode Run(const SetCommand& command, const CommandContext& context);

}  // namespace brantel::host
