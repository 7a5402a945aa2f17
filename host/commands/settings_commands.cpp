#include "host/commands/settings_commands.h"

#include <CLI/CLI.hpp>

#include "host/commands/shared_arguments.h"

namespace brantel::host {
namespace {

void DeclarePlace(CLI::App& parser, SettingsPlace& place) {
  DeclareClass(parser, place.class_name);
  DeclareProfile(parser, place.profile);
}

}  // namespace

const CommandSyntax SettingsListCommand::kSyntax = {
    "settings list", ModuleUse::kNone, ReportUse::kReport, "List the settings of a profile",
    "  notifyhost settings list Pager\n"
    "  notifyhost settings list Beeper --profile 2"};

const CommandSyntax SettingsGetCommand::kSyntax = {
    "settings get", ModuleUse::kNone, ReportUse::kReport, "Print one setting",
    "  notifyhost settings get Pager Settings_COMPort"};

const CommandSyntax SettingsSetCommand::kSyntax = {
    "settings set", ModuleUse::kNone, ReportUse::kReport, "Store settings",
    "  notifyhost settings set Pager Settings_COMPort=COM2 baud=9600"};

const CommandSyntax SettingsResetCommand::kSyntax = {
    "settings reset", ModuleUse::kNone, ReportUse::kReport,
    "Take settings out, so that their defaults count",
    "  notifyhost settings reset Beeper Settings_DialString\n"
    "  notifyhost settings reset Pager --profile 1"};

const CommandSyntax SettingsExportCommand::kSyntax = {
    "settings export", ModuleUse::kNone, ReportUse::kNone,
    "Print the settings that are stored, for import",
    "  notifyhost settings export Pager >pager.json"};

const CommandSyntax SettingsImportCommand::kSyntax = {
    "settings import", ModuleUse::kNone, ReportUse::kReport, "Store what export has printed",
    "  notifyhost settings import Pager pager.json --profile 1"};

void DeclareArguments(CLI::App& parser, SettingsListCommand& command) {
  DeclarePlace(parser, command.place);
}

void DeclareArguments(CLI::App& parser, SettingsGetCommand& command) {
  DeclarePlace(parser, command.place);
  parser
      .add_option("NAME", command.name, "Name of the setting; settings list tells which there are")
      ->type_name("");
}

void DeclareArguments(CLI::App& parser, SettingsSetCommand& command) {
  DeclarePlace(parser, command.place);
  DeclareAssignments(parser, "SETTINGS", "NAME=VALUE", command.values,
                     "NAME=VALUE for each setting to store; settings list\n"
                     "tells which there are. In a name letter case does not\n"
                     "matter, and Settings_ may be left out");
  DeclareNoCheck(parser, command.is_unchecked);
}

void DeclareArguments(CLI::App& parser, SettingsResetCommand& command) {
  DeclarePlace(parser, command.place);
  DeclareNames(parser, "NAMES", command.names,
               "Names of the settings. Without one: all of the profile");
}

void DeclareArguments(CLI::App& parser, SettingsExportCommand& command) {
  DeclarePlace(parser, command.place);
}

void DeclareArguments(CLI::App& parser, SettingsImportCommand& command) {
  DeclarePlace(parser, command.place);
  DeclareFile(parser, command.file, "File with what export has printed");
  DeclareNoCheck(parser, command.is_unchecked);
}

}  // namespace brantel::host
