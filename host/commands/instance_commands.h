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

// "instances": lists the instances in a directory.
struct InstancesCommand {
  static const CommandSyntax kSyntax;

  std::string directory;  // as given, so it may be relative
};

// "show": shows what an instance file holds.
struct ShowCommand {
  static const CommandSyntax kSyntax;

  std::string file;  // as given, so it may be relative
  bool as_json = false;
};

// "new": writes an instance file.
struct NewCommand {
  static const CommandSyntax kSyntax;

  std::string class_name;
  std::string file;  // as given, so it may be relative
  std::vector<FieldValue> values;
  bool replaces = false;
};

// "fields": lists the fields of a class's instances.
struct FieldsCommand {
  static const CommandSyntax kSyntax;

  std::string class_name;
};

// The parser fills in `command`, which must outlive it.
void DeclareArguments(CLI::App& parser, InstancesCommand& command);
void DeclareArguments(CLI::App& parser, ShowCommand& command);
void DeclareArguments(CLI::App& parser, NewCommand& command);
void DeclareArguments(CLI::App& parser, FieldsCommand& command);

// Prints a table of the files in the directory. Throws CommandFailure when there is no such
// directory.
ExitCode Run(const InstancesCommand& command, const CommandContext& context);

// Prints the instance as its notifier reads it. Throws CommandFailure when no instance can be read,
// and also, after printing it, when the file is damaged.
ExitCode Run(const ShowCommand& command, const CommandContext& context);

// Writes the file. Throws CommandFailure when that does not succeed, when the file exists and may
// not be replaced, and when a field cannot have its value.
ExitCode Run(const NewCommand& command, const CommandContext& context);

// Prints a table of the class's fields.
ExitCode Run(const FieldsCommand& command, const CommandContext& context);

}  // namespace brantel::host
