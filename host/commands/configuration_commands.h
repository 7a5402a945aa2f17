#pragma once

#include <string>

#include "host/commands/command.h"
#include "host/outcome/command_failure.h"

namespace CLI {
class App;
}

namespace brantel::host {

// "add": shows the dialog for a new instance.
struct AddCommand {
  static const CommandSyntax kSyntax;

  std::string class_name;
  std::string directory;  // as given, so it may be relative
};

// "edit": shows the dialog for an existing instance.
struct EditCommand {
  static const CommandSyntax kSyntax;

  std::string class_name;
  std::string directory;  // as given, so it may be relative
  std::string name;
};

// The parser fills in `command`, which must outlive it.
void DeclareArguments(CLI::App& parser, AddCommand& command);
void DeclareArguments(CLI::App& parser, EditCommand& command);

// Shows the class's dialog, through the context's module file or the registered class, and prints
// the log that comes meanwhile and then what became of the instance. Throws CommandFailure when
// there is no such directory, or no dialog can be shown.
ExitCode Run(const AddCommand& command, const CommandContext& context);
ExitCode Run(const EditCommand& command, const CommandContext& context);

}  // namespace brantel::host
