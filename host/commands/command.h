#pragma once

namespace brantel::host {

// Whether a command takes --module.
enum class ModuleUse { kNone, kModule };

// Whether a command takes --json, since it tells of things and does not hand on a log.
enum class ReportUse { kNone, kReport };

// How a command is called and what its help says. A command is a structure of its arguments with
//
//   static const CommandSyntax kSyntax;
//
// and two functions beside it: DeclareArguments, which makes a parser fill in the structure, and
// Run, which does what the command is for and lies in a file for Windows.
struct CommandSyntax {
  const char* name;  // of a command in a group with the group's before it: "settings list"
  ModuleUse module_use;
  ReportUse report_use;
  const char* summary;
  const char* examples;
};

// What Run gets beside the command's own arguments, in command_context_win32.h.
struct CommandContext;

}  // namespace brantel::host
