#pragma once

#include <windows.h>

#include <filesystem>
#include <string>
#include <vector>

#include "system/windows/handle_win32.h"
#include "tests/module/scratch_directory.h"

namespace brantel {

// What the child program says of its start. Texts are the bytes of its ANSI calls.
struct ProgramReport {
  std::string command_line;
  std::string directory;
  std::string program;
  DWORD startup_size = 0;
  DWORD startup_flags = 0;
  DWORD show_window = 0;
  DWORD priority_class = 0;
  DWORD process_id = 0;
};

// Expects one start of the child program while it lives: sets the environment through which child
// and test find each other, and ends the child in the end.
class ProgramWatch {
 public:
  explicit ProgramWatch(const ScratchDirectory& scratch);
  ProgramWatch(const ProgramWatch&) = delete;
  ProgramWatch& operator=(const ProgramWatch&) = delete;
  ~ProgramWatch();

  // Waits until the child has reported. Throws std::runtime_error when none does.
  const ProgramReport& AwaitReport();

  // After the report: whether the child still runs.
  [[nodiscard]] bool IsRunning() const;

  // After the report: lets the child end and waits for it.
  void LetItEnd();

 private:
  std::filesystem::path report_file_;
  Handle reported_;
  Handle release_;
  Handle process_;
  ProgramReport report_;
};

// Copies the child program into the folder and returns the copy's path.
std::filesystem::path PlaceChildProgram(const ScratchDirectory& scratch,
                                        const std::filesystem::path& name);

// Notes which kernel handles this process has, and tells those that it has got since. On its end it
// closes the threads of other processes among them.
class HandleWatch {
 public:
  HandleWatch();
  HandleWatch(const HandleWatch&) = delete;
  HandleWatch& operator=(const HandleWatch&) = delete;
  ~HandleWatch();

  [[nodiscard]] std::vector<HANDLE> NewHandles() const;

 private:
  std::vector<HANDLE> before_;
};

}  // namespace brantel
