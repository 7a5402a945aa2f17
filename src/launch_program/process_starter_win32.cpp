#include "launch_program/process_starter_win32.h"

#include <windows.h>

#include "system/windows/current_directory_win32.h"

namespace brantel {

bool SystemProcessStarter::Start(const std::string& command_line,
                                 const std::string& working_directory) {
  STARTUPINFOA startup{};
  static_assert(sizeof startup == 68 || sizeof(void*) != 4);
  startup.cb = sizeof startup;
  // Deliberately without STARTF_USESHOWWINDOW: the program opens its window as it chooses.
  startup.wShowWindow = SW_SHOWNORMAL;

  std::string writable_command_line = command_line;  // CreateProcess may write into it
  PROCESS_INFORMATION process{};
  const BOOL started = CreateProcessA(
      nullptr, writable_command_line.data(), nullptr, nullptr, FALSE, NORMAL_PRIORITY_CLASS,
      nullptr, working_directory.empty() ? nullptr : working_directory.c_str(), &startup, &process);
  if (started == FALSE) return false;

  // Deliberately the process handle alone: the thread handle stays open in the host's process.
  CloseHandle(process.hProcess);
  return true;
}

bool SystemProcessStarter::CanStartIn(const std::string& working_directory) {
  const CurrentDirectoryKeeper keeper;
  return SetCurrentDirectoryA(working_directory.c_str()) != FALSE;
}

}  // namespace brantel
