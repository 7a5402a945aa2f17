#include "host/commands/send_command.h"

#include <CLI/CLI.hpp>

#include "host/commands/shared_arguments.h"

namespace brantel::host {

const CommandSyntax SendCommand::kSyntax = {
    "send", ModuleUse::kModule, ReportUse::kReport, "Deliver an alert",
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
  DeclareAlertOptions(parser, command.options);
}

}  // namespace brantel::host
