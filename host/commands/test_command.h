#pragma once

#include <string>
#include <vector>

#include "host/commands/alert_options.h"
#include "host/commands/command.h"
#include "host/instances/class_fields.h"
#include "host/outcome/command_failure.h"

namespace CLI {
class App;
}

namespace brantel::host {

// "test": delivers one alert of values that are not saved.
struct TestCommand {
  static const CommandSyntax kSyntax;

  std::string class_name;
  std::vector<FieldValue> values;
  bool is_unchecked = false;
  AlertOptions options;
};

// The parser fills in `command`, which must outlive it.
void DeclareArguments(CLI::App& parser, TestCommand& command);

// Checks the values by doctor's rules and delivers the alert as DeliverAndTell says. The file in
// which the notifier finds the values is there for that time alone. Throws CommandFailure when a
// field cannot have its value.
ExitCode Run(const TestCommand& command, const CommandContext& context);

}  // namespace brantel::host
