#pragma once

#include <string>

namespace CLI {
class App;
}

namespace brantel::host {

// "add": shows the dialog for a new instance.
struct AddCommand {
  std::string class_name;
  std::string directory;  // as given, so it may be relative
};

// "edit": shows the dialog for an instance that there is.
struct EditCommand {
  std::string class_name;
  std::string directory;  // as given, so it may be relative
  std::string name;
};

// Makes `parser` fill in `command`, which must outlive it.
void DeclareArguments(CLI::App& parser, AddCommand& command);
void DeclareArguments(CLI::App& parser, EditCommand& command);

}  // namespace brantel::host
