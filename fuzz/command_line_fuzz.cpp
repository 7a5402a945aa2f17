// The host's command line: whatever the arguments are, they are a command, a request for help or a
// wrong usage that says where help is, and a command that is written down again is read the same.
#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>
#include <variant>
#include <vector>

#include "fuzz/fuzz_input.h"
#include "host/command_line.h"
#include "text/text_end.h"

namespace brantel::host {
namespace {

using Arguments = std::vector<std::string>;

void AppendVariables(Arguments& arguments, const MessageVariables& variables) {
  for (const std::string_view letters :
       {"abcdefghijklmnopqrstuvwxyz", "ABCDEFGHIJKLMNOPQRSTUVWXYZ"}) {
    for (const char letter : letters) {
      const std::string variable = {'%', letter};
      const std::string value = variables.Expand(variable);
      if (value == variable) continue;
      arguments.emplace_back("--set");
      arguments.push_back(letter + ("=" + value));
    }
  }
}

// Writes a command down: its name and options, the mark behind which everything is an argument, and
// those.
struct Writer {
  Arguments operator()(const ClassesCommand&) const { return {"classes"}; }
  Arguments operator()(const RegisterCommand&) const { return {"register"}; }
  Arguments operator()(const UnregisterCommand&) const { return {"unregister"}; }
  Arguments operator()(const SendCommand& command) const {
    const auto& word = command.event.trigger_word;
    Arguments arguments = {"send", "--event", word ? std::to_string(*word) : "none"};
    AppendVariables(arguments, command.variables);
    arguments.insert(arguments.end(), {"--", command.class_name, command.instance_file});
    return arguments;
  }
  Arguments operator()(const AddCommand& command) const {
    return {"add", "--", command.class_name, command.directory};
  }
  Arguments operator()(const EditCommand& command) const {
    return {"edit", "--", command.class_name, command.directory, command.name};
  }
  Arguments operator()(const InstancesCommand& command) const {
    return {"instances", "--", command.directory};
  }
  Arguments operator()(const ShowCommand& command) const {
    if (command.as_json) return {"show", "--json", "--", command.file};
    return {"show", "--", command.file};
  }
  Arguments operator()(const NewCommand& command) const {
    Arguments arguments = {"new"};
    if (command.replaces) arguments.emplace_back("--force");
    arguments.insert(arguments.end(), {"--", command.class_name, command.file});
    for (const FieldValue& value : command.values) {
      arguments.push_back(value.field + "=" + value.value);
    }
    return arguments;
  }
  Arguments operator()(const FieldsCommand& command) const {
    return {"fields", "--", command.class_name};
  }
};

Arguments Written(const Invocation& invocation) {
  Arguments arguments = std::visit(Writer(), invocation.command);
  if (invocation.module_file) {
    arguments.insert(arguments.begin(), "--module=" + *invocation.module_file);
  }
  return arguments;
}

struct Checker {
  void operator()(const UsageError& error) const {
    Require(error.text.starts_with("notifyhost: ") && error.text.ends_with(" for help.\n"));
  }
  void operator()(const HelpRequest& help) const {
    Require(help.text.find("\nUsage: notifyhost ") != std::string::npos);
  }
  void operator()(const Invocation& invocation) const {
    const Arguments arguments = Written(invocation);
    const auto again = ParseCommandLine(arguments);
    const auto* const read = std::get_if<Invocation>(&again);
    Require(read != nullptr && Written(*read) == arguments);
  }
};

// Behind the mark any text is a file's name, even one that looks like an option.
void CheckFileName(const std::string& name) {
  const auto parsed = ParseCommandLine({"show", "--", name});
  const auto* const read = std::get_if<Invocation>(&parsed);
  Require(read != nullptr && std::get<ShowCommand>(read->command).file == name);
}

}  // namespace
}  // namespace brantel::host

// The arguments, with vertical tabs between. The system gives none with a NUL in it.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  using namespace brantel;
  const std::string bytes(data, data + size);
  FuzzInput input(bytes);
  host::Arguments arguments;
  while (!input.AtEnd())
    arguments.emplace_back(UpToNul(input.Field()));
  if (arguments.size() == 1 && !arguments.front().empty()) host::CheckFileName(arguments.front());
  std::visit(host::Checker(), host::ParseCommandLine(arguments));
  return 0;
}
