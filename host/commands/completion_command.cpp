#include "host/commands/completion_command.h"

#include <CLI/CLI.hpp>
#include <algorithm>

#include "host/completion/completion_script.h"
#include "host/text/name_list.h"
#include "host/text/nearest_name.h"

namespace brantel::host {
namespace {

void SetShell(CompletionCommand& command, const std::string& given) {
  const auto shells = CompletionShells();
  if (std::ranges::find(shells, given, &CompletionShell::name) == shells.end()) {
    const auto names = NamesOf(shells, &CompletionShell::name);
    throw CLI::ValidationError(
        "SHELL", UnknownName(given, "a shell that completes", "shells", ViewsOf(names)));
  }
  command.shell = given;
}

}  // namespace

const CommandSyntax CompletionCommand::kSyntax = {
    "completion", ModuleUse::kNone, ReportUse::kNone, "Show a script that completes command lines",
    "  notifyhost completion powershell | Out-String | Invoke-Expression\n"
    "  source <(notifyhost completion bash)"};

void DeclareArguments(CLI::App& parser, CompletionCommand& command) {
  parser
      .add_option_function<std::string>(
          "SHELL", [&command](const std::string& given) { SetShell(command, given); },
          "bash or powershell")
      ->type_name("");
}

}  // namespace brantel::host
