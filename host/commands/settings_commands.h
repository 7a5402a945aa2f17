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

// Which settings a command of the group is about.
struct SettingsPlace {
  std::string class_name;
  int profile = 0;
};

// "settings list": lists the settings of a profile.
struct SettingsListCommand {
  static const CommandSyntax kSyntax;

  SettingsPlace place;
};

// "settings get": prints one of them.
struct SettingsGetCommand {
  static const CommandSyntax kSyntax;

  SettingsPlace place;
  std::string name;
};

// "settings set": writes some of them.
struct SettingsSetCommand {
  static const CommandSyntax kSyntax;

  SettingsPlace place;
  std::vector<FieldValue> values;
  bool is_unchecked = false;
};

// "settings reset": takes some of them out, so that their defaults count.
struct SettingsResetCommand {
  static const CommandSyntax kSyntax;

  SettingsPlace place;
  std::vector<std::string> names;  // all when it is empty
};

// "settings export": prints those that are stored, in the form that import reads.
struct SettingsExportCommand {
  static const CommandSyntax kSyntax;

  SettingsPlace place;
};

// "settings import": stores what a file of that form says.
struct SettingsImportCommand {
  static const CommandSyntax kSyntax;

  SettingsPlace place;
  std::string file;  // as given, so it may be relative
  bool is_unchecked = false;
};

// The parser fills in `command`, which must outlive it.
void DeclareArguments(CLI::App& parser, SettingsListCommand& command);
void DeclareArguments(CLI::App& parser, SettingsGetCommand& command);
void DeclareArguments(CLI::App& parser, SettingsSetCommand& command);
void DeclareArguments(CLI::App& parser, SettingsResetCommand& command);
void DeclareArguments(CLI::App& parser, SettingsExportCommand& command);
void DeclareArguments(CLI::App& parser, SettingsImportCommand& command);

// Each throws CommandFailure for a class without settings, for a name that is none of the class's
// settings, and when the registry cannot be read or written.
ExitCode Run(const SettingsListCommand& command, const CommandContext& context);
ExitCode Run(const SettingsGetCommand& command, const CommandContext& context);
ExitCode Run(const SettingsSetCommand& command, const CommandContext& context);
// kNothingMatched when none of them was stored.
ExitCode Run(const SettingsResetCommand& command, const CommandContext& context);
ExitCode Run(const SettingsExportCommand& command, const CommandContext& context);
ExitCode Run(const SettingsImportCommand& command, const CommandContext& context);

}  // namespace brantel::host
