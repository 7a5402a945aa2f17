#pragma once

#include <string>
#include <vector>

#include "host/commands/command.h"
#include "host/outcome/command_failure.h"

namespace CLI {
class App;
}

namespace brantel::host {

// "serve": shows a web console for a directory of instances.
struct ServeCommand {
  static const CommandSyntax kSyntax;

  std::string directory;  // as given, so it may be relative
  int port = 8080;
  std::string address = "127.0.0.1";
  std::vector<std::string> host_names;  // further ones, by which a proxy asks
  std::string password_file;            // as given; empty when none is
  bool sets_password = false;
  bool shows_secrets = false;
  std::string notice;      // words on the overview; empty for none
  std::string journal;     // as given; empty when none is
  std::string watch_file;  // the plan of a watch beside it, as given; empty when there is none
};

// The parser fills in `command`, which must outlive it.
void DeclareArguments(CLI::App& parser, ServeCommand& command);

// Serves, and watches where that is asked for, until Ctrl-C. Throws CommandFailure when nothing can
// be served, and when others than this computer would reach the console without a password.
ExitCode Run(const ServeCommand& command, const CommandContext& context);

}  // namespace brantel::host
