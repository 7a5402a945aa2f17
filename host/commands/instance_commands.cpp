#include "host/commands/instance_commands.h"

#include <CLI/CLI.hpp>

#include "host/commands/shared_arguments.h"

namespace brantel::host {
namespace {

// More than any class has.
constexpr int kMostFields = 1000;

std::vector<FieldValue> ParseFieldValues(const std::vector<std::string>& texts) {
  std::vector<FieldValue> values;
  for (const std::string& text : texts) {
    const auto value = FieldValue::Parse(text);
    if (!value) throw CLI::ValidationError("'" + text + "' is not of the form FIELD=VALUE");
    values.push_back(*value);
  }
  return values;
}

void DeclareFlag(CLI::App& parser, const char* name, bool& flag, const char* description) {
  parser.add_flag_callback(
      name, [&flag] { flag = true; }, description);
}

}  // namespace

const CommandSyntax InstancesCommand::kSyntax = {"instances", ModuleUse::kNone,
                                                 "List the instances in a directory",
                                                 "  notifyhost instances C:\\Instances"};

const CommandSyntax ShowCommand::kSyntax = {"show", ModuleUse::kNone, "Show what an instance holds",
                                            "  notifyhost show C:\\Instances\\Night\n"
                                            "  notifyhost show Night --json"};

const CommandSyntax NewCommand::kSyntax = {
    "new", ModuleUse::kNone, "Write an instance without a dialog",
    "  notifyhost new Beeper Night \"beeper number=5551234\" down-code=911\n"
    "  notifyhost new Sound Default wave_filename=C:\\alarm.wav --force"};

const CommandSyntax FieldsCommand::kSyntax = {"fields", ModuleUse::kNone,
                                              "List the fields of a class's instances",
                                              "  notifyhost fields Beeper"};

void DeclareArguments(CLI::App& parser, InstancesCommand& command) {
  DeclareDirectory(parser, command.directory);
}

void DeclareArguments(CLI::App& parser, ShowCommand& command) {
  DeclareFile(parser, command.file, "Instance file of any class");
  DeclareFlag(parser, "--json", command.as_json,
              "Show the instance as a JSON object: class, name and\n"
              "fields, with texts as they are stored");
}

void DeclareArguments(CLI::App& parser, NewCommand& command) {
  DeclareClass(parser, command.class_name);
  DeclareFile(parser, command.file,
              "Instance file to write. Its name is the instance's,\n"
              "without an extension");
  const CLI::callback_t set_values = [&command](const CLI::results_t& texts) {
    command.values = ParseFieldValues(texts);
    return true;
  };
  parser
      .add_option("FIELDS", set_values,
                  "FIELD=VALUE for each field that is not to be empty\n"
                  "or 0; notifyhost fields lists the fields of a class.\n"
                  "In a field's name letter case does not matter, and -\n"
                  "or _ may stand for blanks. Values are stored as they\n"
                  "are, line breaks too")
      ->option_text("...")
      // Arguments beyond its least number an option reads for lists in brackets. With this policy
      // it may have fewer.
      ->expected(kMostFields)
      ->multi_option_policy(CLI::MultiOptionPolicy::TakeAll);
  DeclareFlag(parser, "--force", command.replaces,
              "Replace the file if it exists, whatever it holds");
}

void DeclareArguments(CLI::App& parser, FieldsCommand& command) {
  DeclareClass(parser, command.class_name);
}

}  // namespace brantel::host
