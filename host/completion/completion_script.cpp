#include "host/completion/completion_script.h"

#include <array>

namespace brantel::host {
namespace {

std::string Joined(const std::vector<std::string>& words) {
  std::string joined;
  for (const std::string& word : words)
    joined += (joined.empty() ? "" : " ") + word;
  return joined;
}

// A case for each command. Both shells match what is typed against patterns with "*".
std::string Cases(std::span<const CompletedCommand> commands, std::string_view before_words,
                  std::string_view behind_words) {
  std::string cases;
  for (const CompletedCommand& command : commands) {
    const std::string pattern = command.command.empty() ? "*" : "'" + command.command + " '*";
    cases.append("    ").append(pattern).append(before_words);
    cases.append(Joined(command.words)).append(behind_words);
  }
  return cases;
}

// For whatever has no word here, bash completes names of files.
std::string BashScript(std::span<const CompletedCommand> commands) {
  return "# Completion of notifyhost for bash. Use it by\n"
         "#   source <(notifyhost completion bash)\n"
         "_notifyhost() {\n"
         "  local words typed=\"${COMP_WORDS[*]:1:COMP_CWORD-1} \"\n"
         "  case $typed in\n" +
         Cases(commands, ") words='", "' ;;\n") +
         "  esac\n"
         "  mapfile -t COMPREPLY < <(compgen -W \"$words\" -- \"${COMP_WORDS[COMP_CWORD]}\")\n"
         "}\n"
         "complete -o default -F _notifyhost notifyhost notifyhost.exe\n";
}

// PowerShell quotes patterns as a whole.
std::string PowerShellScript(std::span<const CompletedCommand> commands) {
  std::string cases;
  for (const CompletedCommand& command : commands) {
    const std::string pattern = command.command.empty() ? "*" : command.command + " *";
    cases += "    '" + pattern + "' { '" + Joined(command.words) + "'; break }\n";
  }
  return "# Completion of notifyhost for PowerShell. Use it by\n"
         "#   notifyhost completion powershell | Out-String | Invoke-Expression\n"
         "Register-ArgumentCompleter -Native -CommandName notifyhost, notifyhost.exe -ScriptBlock "
         "{\n"
         "  param($word, $command, $cursor)\n"
         "  $typed = @($command.CommandElements | Select-Object -Skip 1 |\n"
         "    Where-Object { $_.Extent.EndOffset -lt $cursor } | ForEach-Object { \"$_\" })\n"
         "  $words = switch -Wildcard (\"$($typed -join ' ') \") {\n" +
         cases +
         "  }\n"
         "  $words -split ' ' | Where-Object { $_ -like \"$word*\" } |\n"
         "    ForEach-Object { [System.Management.Automation.CompletionResult]::new($_) }\n"
         "}\n";
}

constexpr std::array kShells = {CompletionShell{"bash", BashScript},
                                CompletionShell{"powershell", PowerShellScript}};

}  // namespace

std::span<const CompletionShell> CompletionShells() {
  return kShells;
}

}  // namespace brantel::host
