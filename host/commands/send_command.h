#pragma once

#include <string>

#include "host/commands/alert_options.h"
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
  AlertOptions options;
};

// The parser fills in `command`, which must outlive it.
void DeclareArguments(CLI::App& parser, SendCommand& command);

// Delivers the alert as DeliverAndTell says.
ExitCode Run(const SendCommand& command, const CommandContext& context);

}  // namespace brantel::host
