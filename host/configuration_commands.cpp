#include "host/configuration_commands.h"

#include <CLI/CLI.hpp>

#include "host/shared_arguments.h"

namespace brantel::host {

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
