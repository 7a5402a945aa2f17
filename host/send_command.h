#pragma once

#include <string>

#include "host/alert_event.h"
#include "host/message_variables.h"

namespace CLI {
class App;
}

namespace brantel::host {

// "send": delivers one alert.
struct SendCommand {
  std::string class_name;
  std::string instance_file;  // as given, so it may be relative, or empty
  AlertEvent event = kItemDown;
  MessageVariables variables;
};

// Makes `parser` fill in `command`, which must outlive it.
void DeclareArguments(CLI::App& parser, SendCommand& command);

}  // namespace brantel::host
