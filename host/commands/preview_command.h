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

// "preview": tells what an alert would send, without a device.
struct PreviewCommand {
  static const CommandSyntax kSyntax;

  std::string file;  // as given, so it may be relative
  AlertEvent event = kItemDown;
  MessageVariables variables;
  bool takes_raw_values = false;
  bool shows_secrets = false;
};

// The parser fills in `command`, which must outlive it.
void DeclareArguments(CLI::App& parser, PreviewCommand& command);

// Tells what would go out, and in what time. Throws CommandFailure when no instance can be read,
// and also, after telling as much, when the alert would fail whatever the far ends answer, and when
// the file is damaged.
ExitCode Run(const PreviewCommand& command, const CommandContext& context);

}  // namespace brantel::host
