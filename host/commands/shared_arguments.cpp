#include "host/commands/shared_arguments.h"

#include <CLI/CLI.hpp>

namespace brantel::host {
namespace {

void DeclareName(CLI::App& parser, const std::string& argument, std::string& name,
                 const std::string& description) {
  const auto set_name = [argument, &name](const std::string& given) {
    if (given.empty()) throw CLI::ValidationError(argument, "the name is empty");
    name = given;
  };
  parser.add_option_function<std::string>(argument, set_name, description)->type_name("");
}

}  // namespace

void DeclareClass(CLI::App& parser, std::string& class_name) {
  parser.add_option("CLASS", class_name, "Notifier class; notifyhost classes lists them")
      ->type_name("");
}

void DeclareDirectory(CLI::App& parser, std::string& directory) {
  DeclareName(parser, "DIR", directory, "Directory of instance files");
}

void DeclareFile(CLI::App& parser, std::string& file, const std::string& description) {
  DeclareName(parser, "FILE", file, description);
}

}  // namespace brantel::host
