#include "host/conformance/conformance_process_win32.h"

#include <windows.h>

#include <array>
#include <string>
#include <string_view>

#include "host/conformance/conformance_trial_win32.h"
#include "host/outcome/command_failure.h"
#include "host/outcome/system_error_text_win32.h"
#include "host/system/file_path_win32.h"
#include "system/windows/handle_win32.h"

namespace brantel::host {
namespace {

// Far more than a trial takes, and than it tells.
constexpr DWORD kTrialMilliseconds = 60000;
constexpr DWORD kPipeBytes = 65536;

void Require(BOOL has_succeeded, const char* what) {
  if (has_succeeded == FALSE)
    throw CommandFailure(ExitCode::kFailed,
                         std::string(what) + ": " + SystemErrorText(GetLastError()));
}

struct Pipe {
  Pipe() {
    HANDLE read_end = nullptr;
    HANDLE write_end = nullptr;
    Require(CreatePipe(&read_end, &write_end, nullptr, kPipeBytes), "no pipe can be made");
    reader = Handle(read_end);
    writer = Handle(write_end);
    SetHandleInformation(writer.get(), HANDLE_FLAG_INHERIT, HANDLE_FLAG_INHERIT);
  }
  Handle reader;
  Handle writer;
};

Handle StartTrial(const std::wstring& library, HANDLE lines) {
  std::array<wchar_t, kPathCapacity> program{};
  GetModuleFileNameW(nullptr, program.data(), program.size());
  std::wstring command_line = TrialCommandLine({lines, library});
  STARTUPINFOW startup{};
  startup.cb = sizeof startup;
  // What the host's library prints is not wanted.
  startup.dwFlags = STARTF_USESTDHANDLES;
  PROCESS_INFORMATION started{};
  Require(CreateProcessW(program.data(), command_line.data(), nullptr, nullptr, TRUE, 0, nullptr,
                         nullptr, &startup, &started),
          "no process for the trial can be started");
  CloseHandle(started.hThread);
  return Handle(started.hProcess);
}

TrialEnd AwaitEnd(const Handle& process) {
  TrialEnd end;
  end.has_timed_out = WaitForSingleObject(process.get(), kTrialMilliseconds) != WAIT_OBJECT_0;
  if (end.has_timed_out) {
    TerminateProcess(process.get(), static_cast<UINT>(ExitCode::kFailed));
    WaitForSingleObject(process.get(), INFINITE);
  }
  DWORD code = 0;
  GetExitCodeProcess(process.get(), &code);
  end.exit_code = code;
  return end;
}

std::string ReadAll(const Handle& pipe) {
  std::string all(kPipeBytes, '\0');
  DWORD available = 0;
  DWORD read = 0;
  if (PeekNamedPipe(pipe.get(), nullptr, 0, nullptr, &available, nullptr) != FALSE && available > 0)
    ReadFile(pipe.get(), all.data(), kPipeBytes, &read, nullptr);
  all.resize(read);
  return all;
}

}  // namespace

std::vector<CheckResult> TryHost(const std::wstring& library) {
  const Pipe pipe;
  const Handle process = StartTrial(library, pipe.writer.get());
  const TrialEnd end = AwaitEnd(process);
  const std::string lines = ReadAll(pipe.reader);
  if (lines.starts_with('!')) throw CommandFailure(ExitCode::kFailed, lines.substr(1));
  return ReadTrial(lines, end);
}

}  // namespace brantel::host
