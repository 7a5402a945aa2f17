#pragma once

#include <string>
#include <vector>

#include "host/class_fields.h"

namespace CLI {
class App;
}

namespace brantel::host {

// "instances": lists the instances in a directory.
struct InstancesCommand {
  std::string directory;  // as given, so it may be relative
};

// "show": shows what an instance file holds.
struct ShowCommand {
  std::string file;  // as given, so it may be relative
  bool as_json = false;
};

// "new": writes an instance file.
struct NewCommand {
  std::string class_name;
  std::string file;  // as given, so it may be relative
  std::vector<FieldValue> values;
  bool replaces = false;
};

// "fields": lists the fields of a class's instances.
struct FieldsCommand {
  std::string class_name;
};

// Makes `parser` fill in `command`, which must outlive it.
void DeclareArguments(CLI::App& parser, InstancesCommand& command);
void DeclareArguments(CLI::App& parser, ShowCommand& command);
void DeclareArguments(CLI::App& parser, NewCommand& command);
void DeclareArguments(CLI::App& parser, FieldsCommand& command);

}  // namespace brantel::host
