#pragma once

#include <optional>
#include <string>
#include <variant>
#include <vector>

#include "host/commands/configuration_commands.h"
#include "host/commands/instance_commands.h"
#include "host/commands/module_commands.h"
#include "host/commands/send_command.h"

namespace brantel::host {

using Command =
    std::variant<ClassesCommand, RegisterCommand, UnregisterCommand, SendCommand, AddCommand,
                 EditCommand, InstancesCommand, ShowCommand, NewCommand, FieldsCommand>;

// What the command line asks for.
struct Invocation {
  // The module to load without registration. Without it, commands about the module take the one
  // beside the host, alerts and dialogs go through registered classes, and the other commands need
  // no module.
  std::optional<std::string> module_file;
  Command command;
};

// The command line asks for this help text.
struct HelpRequest {
  std::string text;
};

// The command line is wrong: which argument, why, and where help is.
struct UsageError {
  std::string text;
};

// Reads the arguments behind the program's name, all in UTF-8.
std::variant<Invocation, HelpRequest, UsageError> ParseCommandLine(
    const std::vector<std::string>& arguments);

}  // namespace brantel::host
