#include "host/commands/new_command.h"

#include <CLI/CLI.hpp>

#include "host/commands/shared_arguments.h"

namespace brantel::host {

const CommandSyntax NewCommand::kSyntax = {
    "new", ModuleUse::kNone, ReportUse::kReport, "Write an instance without a dialog",
    "  notifyhost new Beeper Night \"beeper number=5551234\" down-code=911\n"
    "  notifyhost new Sound Default wave_filename=C:\\alarm.wav --force"};

void DeclareArguments(CLI::App& parser, NewCommand& command) {
  DeclareClass(parser, command.class_name);
  DeclareFile(parser, command.file,
              "Instance file to write. Its name is the instance's,\n"
              "without an extension");
  DeclareAssignments(parser, "FIELDS", "FIELD=VALUE", command.values,
                     "FIELD=VALUE for each field that is not to be empty\n"
                     "or 0; notifyhost fields lists the fields of a class.\n"
                     "In a field's name letter case does not matter, and -\n"
                     "or _ may stand for blanks. Values are stored as they\n"
                     "are, line breaks too");
  DeclareFlag(parser, "--force", command.replaces,
              "Replace the file if it exists, whatever it holds");
  DeclareNoCheck(parser, command.is_unchecked);
}

}  // namespace brantel::host
