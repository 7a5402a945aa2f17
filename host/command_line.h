#pragma once

#include <optional>
#include <string>
#include <variant>
#include <vector>

#include "host/commands/classes_command.h"
#include "host/commands/configuration_commands.h"
#include "host/commands/conformance_command.h"
#include "host/commands/doctor_command.h"
#include "host/commands/fields_command.h"
#include "host/commands/help_command.h"
#include "host/commands/history_command.h"
#include "host/commands/instances_command.h"
#include "host/commands/new_command.h"
#include "host/commands/ports_command.h"
#include "host/commands/preview_command.h"
#include "host/commands/register_command.h"
#include "host/commands/send_command.h"
#include "host/commands/serve_command.h"
#include "host/commands/service_commands.h"
#include "host/commands/set_command.h"
#include "host/commands/settings_commands.h"
#include "host/commands/show_command.h"
#include "host/commands/status_command.h"
#include "host/commands/test_command.h"
#include "host/commands/unregister_command.h"
#include "host/commands/watch_command.h"
#include "host/report/report_writer.h"

namespace brantel::host {

// In the order in which help lists them.
using Command =
    std::variant<ClassesCommand, RegisterCommand, UnregisterCommand, StatusCommand, DoctorCommand,
                 PreviewCommand, SendCommand, TestCommand, HistoryCommand, WatchCommand,
                 ServeCommand, ConformanceCommand, AddCommand, EditCommand, InstancesCommand,
                 ShowCommand, NewCommand, SetCommand, FieldsCommand, PortsCommand,
                 SettingsListCommand, SettingsGetCommand, SettingsSetCommand, SettingsResetCommand,
                 SettingsExportCommand, SettingsImportCommand, ServiceInstallCommand,
                 ServiceRemoveCommand, ServiceStartCommand, ServiceStopCommand, ServiceRunCommand>;

// What the command line asks for.
struct Invocation {
  // The module to load without registration. Without it, commands about the module take the one
  // beside the host, alerts and dialogs go through registered classes, and the other commands need
  // no module.
  std::optional<std::string> module_file;
  ReportForm report_form = ReportForm::kText;
  std::optional<std::string> log_file;  // which gets a copy of what is told, if one is named
  Command command;
};

// The command line asks for this text, of help or of the version.
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
