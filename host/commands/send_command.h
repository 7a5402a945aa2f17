#pragma once

#include <string>

#include "host/alert/alert_event.h"
#include "host/alert/message_variables.h"
#include "host/commands/command.h"
#include "host/outcome/command_failure.h"

namespace CLI {
class App;
}

namespace brantel::host {

// "send": delivers one alert.
struct SendCommand {
  static const CommandSyntax kSyntax;

  std::string class_name;
  std::string instance_file;  // as given, so it may be relative, or empty
  AlertEvent event = kItemDown;
  MessageVariables variables;
  bool shows_secrets = false;
};

// The parser fills in `command`, which must outlive it.
void DeclareArguments(CLI::App& parser, SendCommand& command);

// Delivers the alert through the context's module file, or through the registered class, prints the
// alert's log as it comes and then the outcome. Any result that is not negative counts as
// delivered. Throws CommandFailure when no notifier can be created.
ExitCode Run(const SendCommand& command, const CommandContext& context);

}  // namespace brantel::host
