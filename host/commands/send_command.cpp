#include "host/commands/send_command.h"

#include <CLI/CLI.hpp>
#include <string>
#include <vector>

#include "host/commands/shared_arguments.h"

namespace brantel::host {
namespace {

std::string EventNames() {
  std::string names;
  for (const NamedAlertEvent& named : NamedAlertEvents()) {
    names += std::string(named.name) + ", ";
  }
  return names;
}

void SetEvent(SendCommand& command, const std::string& text) {
  const auto event = ParseAlertEvent(text);
  if (!event) {
    throw CLI::ValidationError("--event", "'" + text + "' is not an event; it takes " +
                                              EventNames() + "or a number from 0 to 0xFFFFFFFF");
  }
  command.event = *event;
}

void SetVariables(SendCommand& command, const std::vector<std::string>& assignments) {
  for (const std::string& assignment : assignments) {
    if (!command.variables.Assign(assignment)) {
      throw CLI::ValidationError("--set", "'" + assignment + "' is not of the form LETTER=VALUE");
    }
  }
}

}  // namespace

const CommandSyntax SendCommand::kSyntax = {
    "send", ModuleUse::kModule, ReportUse::kNone, "Deliver an alert",
    "  notifyhost send LaunchProgram C:\\Instances\\Restart.ins\n"
    "  notifyhost send Beeper Night.ins --event service-up\n"
    "  notifyhost send SMTPMail Office.ins --event trap --set n=Router --set C=17\n"
    "  notifyhost send Sound \"\" --module Brantel_Notifications.dll"};

void DeclareArguments(CLI::App& parser, SendCommand& command) {
  DeclareClass(parser, command.class_name);
  parser
      .add_option("FILE", command.instance_file,
                  "Instance file of that class. With \"\" instead of one,\n"
                  "Sound ends the sound that it repeats")
      ->type_name("");
  parser
      .add_option_function<std::string>(
          "--event", [&command](const std::string& text) { SetEvent(command, text); },
          "What happened: item-up, item-down, service-up,\n"
          "service-down, trap, or a trigger word such as 3 or\n"
          "0x10; none for no event. Without it: item-down")
      ->option_text("EVENT")
      ->multi_option_policy(CLI::MultiOptionPolicy::TakeLast);
  parser
      .add_option_function<std::vector<std::string>>(
          "--set",
          [&command](const std::vector<std::string>& assignments) {
            SetVariables(command, assignments);
          },
          "Puts VALUE in the place of %LETTER in the alert's\n"
          "texts; may be given for several letters. %% becomes\n"
          "%, and variables without a value stay as they are")
      ->option_text("LETTER=VALUE")
      ->allow_extra_args(false);
  DeclareShowSecrets(parser, command.shows_secrets);
}

}  // namespace brantel::host
