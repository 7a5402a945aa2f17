#include "host/commands/configuration_commands.h"

#include <CLI/CLI.hpp>

#include "host/commands/shared_arguments.h"

namespace brantel::host {

const CommandSyntax AddCommand::kSyntax = {
    "add", ModuleUse::kModule, ReportUse::kReport, "Add an instance in the class's dialog",
    "  notifyhost add Beeper C:\\Instances\n"
    "  notifyhost add Sound . --module Brantel_Notifications.dll"};

const CommandSyntax EditCommand::kSyntax = {
    "edit", ModuleUse::kModule, ReportUse::kReport, "Edit an instance in the class's dialog",
    "  notifyhost edit Beeper C:\\Instances Night\n"
    "  notifyhost edit Sound . Default --module Brantel_Notifications.dll"};

void DeclareArguments(CLI::App& parser, AddCommand& command) {
  DeclareClass(parser, command.class_name);
  DeclareDirectory(parser, command.directory);
}

void DeclareArguments(CLI::App& parser, EditCommand& command) {
  DeclareClass(parser, command.class_name);
  DeclareDirectory(parser, command.directory);
  parser.add_option("NAME", command.name, "Name of the instance, which is its file's")
      ->type_name("");
}

}  // namespace brantel::host
