#pragma once

#include <span>
#include <string>
#include <string_view>
#include <vector>

namespace brantel::host {

// What can stand behind a command, and behind its first words: "settings" has "list", "settings
// list" has "--profile". The empty command has what stands behind the program's name.
struct CompletedCommand {
  std::string command;
  std::vector<std::string> words;
};

// A shell that completes what is typed.
struct CompletionShell {
  std::string_view name;
  // The script by which it completes these commands. One with more words stands before those with
  // its first ones.
  std::string (*script)(std::span<const CompletedCommand> commands);
};

std::span<const CompletionShell> CompletionShells();

}  // namespace brantel::host
