#include "host/commands/serve_command.h"

#include <CLI/CLI.hpp>

#include "host/commands/shared_arguments.h"

namespace brantel::host {

const CommandSyntax ServeCommand::kSyntax = {
    "serve", ModuleUse::kModule, ReportUse::kReport, "Show a web console for a directory",
    "  notifyhost serve C:\\Instances\n"
    "  notifyhost serve C:\\Instances --watch C:\\Watch\\night.toml\n"
    "  notifyhost serve C:\\Instances --password-file C:\\Private\\console.pwd --set-password\n"
    "  notifyhost serve C:\\Instances --listen 192.0.2.7 --password-file C:\\Private\\console.pwd"};

void DeclareArguments(CLI::App& parser, ServeCommand& command) {
  constexpr int kLastPort = 65535;
  DeclareDirectory(parser, command.directory);
  DeclareNumber(parser, "--port", command.port, 0, kLastPort,
                "Port. Without it: 8080; 0 takes any that is free");
  DeclareText(parser, "--listen", "ADDRESS", command.address,
              "IP address to listen at. Without it: 127.0.0.1,\n"
              "which this computer alone reaches. Any other needs\n"
              "--password-file. Nothing is encrypted");
  parser
      .add_option("--host", command.host_names,
                  "A further name by which browsers ask for the\n"
                  "console, such as that of a proxy before it; may be\n"
                  "given several times")
      ->option_text("NAME[:PORT]")
      ->allow_extra_args(false);
  DeclareFileOption(parser, "--password-file", command.password_file,
                    "Ask for the password of which this file knows");
  DeclareFlag(parser, "--set-password", command.sets_password,
              "Read a new password, the first line of the input,\n"
              "write it to that file, salted and hashed, and end");
  DeclareFlag(parser, "--show-secrets", command.shows_secrets,
              "Show the module's own pages also for instances that\n"
              "have a password, which then stands in them");
  DeclareText(parser, "--notice", "TEXT", command.notice,
              "Words on the overview, such as whom to call about the\n"
              "console");
  DeclareJournal(parser, command.journal);
  DeclareFileOption(parser, "--watch", command.watch_file,
                    "Also watch what this file names, as notifyhost watch\n"
                    "does, and show how it stands with it");
}

}  // namespace brantel::host
