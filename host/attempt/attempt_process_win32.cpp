#include "host/attempt/attempt_process_win32.h"

#include <algorithm>
#include <array>
#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>

#include "host/attempt/attempt_worker_win32.h"
#include "host/outcome/command_failure.h"
#include "host/outcome/system_error_text_win32.h"
#include "host/system/file_path_win32.h"
#include "host/system/unique_text_win32.h"

namespace brantel::host {
namespace {

constexpr DWORD kPipeBytes = 65536;
constexpr std::size_t kPieceBytes = 4096;

// How long the bytes of a process that has ended may be on their way.
constexpr DWORD kLastWordsMilliseconds = 1000;

// How long a process may take to end: a driver may hold it.
constexpr DWORD kEndMilliseconds = 5000;

[[noreturn]] void ThrowLastError(const char* what) {
  throw CommandFailure(ExitCode::kFailed,
                       std::string(what) + ": " + SystemErrorText(GetLastError()));
}

Handle MakePipe(const std::wstring& name) {
  Handle pipe(CreateNamedPipeW(
      name.c_str(), PIPE_ACCESS_DUPLEX | FILE_FLAG_OVERLAPPED | FILE_FLAG_FIRST_PIPE_INSTANCE,
      PIPE_TYPE_BYTE | PIPE_REJECT_REMOTE_CLIENTS, 1, kPipeBytes, kPipeBytes, 0, nullptr));
  if (!pipe) ThrowLastError("the pipe to the process for the alert cannot be made");
  return pipe;
}

std::wstring ThisProgram() {
  std::array<wchar_t, kPathCapacity> path{};
  GetModuleFileNameW(nullptr, path.data(), path.size());
  return path.data();
}

DWORD MillisecondsUntil(const Deadline& deadline) {
  using std::chrono::milliseconds;
  if (!deadline) return INFINITE;
  const auto left = std::chrono::ceil<milliseconds>(*deadline - std::chrono::steady_clock::now());
  return static_cast<DWORD>(std::clamp<std::int64_t>(left.count(), 0, INFINITE - 1));
}

}  // namespace

AttemptProcess::AttemptProcess(HANDLE stop)
    : stop_(stop),
      // Nobody can guess it, so that no other program can pose as the process.
      pipe_name_(L"\\\\.\\pipe\\notifyhost-" + UniqueText()),
      pipe_(MakePipe(pipe_name_)),
      transfer_done_(CreateEventW(nullptr, TRUE, FALSE, nullptr)) {
  Start();
}

void AttemptProcess::Start() {
  std::wstring command_line = AttemptCommandLine(pipe_name_);
  STARTUPINFOW startup{};
  startup.cb = sizeof startup;
  PROCESS_INFORMATION started{};
  if (CreateProcessW(ThisProgram().c_str(), command_line.data(), nullptr, nullptr, FALSE,
                     CREATE_SUSPENDED, nullptr, nullptr, &startup, &started) == FALSE)
    ThrowLastError("no process for the alert can be started");
  const Handle thread(started.hThread);
  process_ = Handle(started.hProcess);
  EndWithThisProcess();
  ResumeThread(thread.get());
}

// Where that cannot be had, as in a job of an older system, the alert goes on without.
void AttemptProcess::EndWithThisProcess() {
  job_ = Handle(CreateJobObjectW(nullptr, nullptr));
  JOBOBJECT_EXTENDED_LIMIT_INFORMATION limits{};
  limits.BasicLimitInformation.LimitFlags =
      JOB_OBJECT_LIMIT_KILL_ON_JOB_CLOSE | JOB_OBJECT_LIMIT_SILENT_BREAKAWAY_OK;
  if (SetInformationJobObject(job_.get(), JobObjectExtendedLimitInformation, &limits,
                              sizeof limits) != FALSE)
    AssignProcessToJobObject(job_.get(), process_.get());
}

bool AttemptProcess::Deliver(const AlertRequest& request, const Deadline& deadline) {
  if (!Connect(deadline)) return false;
  const std::string line = RequestLine(request);
  std::string_view rest = line;
  while (!rest.empty()) {
    const auto written = Transfer(
        [&] {
          return WriteFile(pipe_.get(), rest.data(), static_cast<DWORD>(rest.size()), nullptr,
                           &transfer_) != FALSE;
        },
        deadline);
    if (!written) return false;
    rest.remove_prefix(*written);
  }
  return true;
}

bool AttemptProcess::Connect(const Deadline& deadline) {
  const auto connect = [&] {
    if (ConnectNamedPipe(pipe_.get(), &transfer_) != FALSE) return true;
    // It was quicker; then nobody signals.
    return GetLastError() == ERROR_PIPE_CONNECTED && SetEvent(transfer_done_.get()) != FALSE;
  };
  return Transfer(connect, deadline).has_value();
}

std::optional<AttemptMessage> AttemptProcess::NextMessage(const Deadline& deadline) {
  while (true) {
    while (const auto line = lines_.NextLine()) {
      if (auto message = ParseMessage(*line)) return message;
    }
    std::array<char, kPieceBytes> piece{};
    const auto read = Transfer(
        [&] {
          return ReadFile(pipe_.get(), piece.data(), piece.size(), nullptr, &transfer_) != FALSE;
        },
        deadline);
    if (!read) return std::nullopt;
    lines_.Take({piece.data(), *read});
  }
}

// Does one operation on the pipe, which has `transfer_`. How many bytes it has moved.
template <typename Operation>
std::optional<DWORD> AttemptProcess::Transfer(Operation operation, const Deadline& deadline) {
  transfer_ = {};
  transfer_.hEvent = transfer_done_.get();
  ResetEvent(transfer_done_.get());
  if (operation() || GetLastError() == ERROR_IO_PENDING) return FinishTransfer(deadline);
  end_ = AttemptEnd::kProcessDied;
  return std::nullopt;
}

std::optional<DWORD> AttemptProcess::FinishTransfer(const Deadline& deadline) {
  end_ = WaitForTransfer(deadline);
  // Its buffer is in use until it has ended.
  if (end_ != AttemptEnd::kReturned) CancelIo(pipe_.get());
  DWORD moved = 0;
  if (GetOverlappedResult(pipe_.get(), &transfer_, &moved, TRUE) != FALSE) return moved;
  if (end_ == AttemptEnd::kReturned) end_ = AttemptEnd::kProcessDied;
  return std::nullopt;
}

AttemptEnd AttemptProcess::WaitForTransfer(const Deadline& deadline) {
  const std::array events = {transfer_done_.get(), process_.get(), stop_};
  // What has been told before the end is read to its end, whatever else happens.
  const DWORD count = is_killed_ || stop_ == nullptr ? 2 : 3;
  switch (WaitForMultipleObjects(count, events.data(), FALSE, MillisecondsUntil(deadline))) {
    case WAIT_OBJECT_0:
      return AttemptEnd::kReturned;
    case WAIT_OBJECT_0 + 1:
      return WaitForSingleObject(transfer_done_.get(), kLastWordsMilliseconds) == WAIT_OBJECT_0
                 ? AttemptEnd::kReturned
                 : AttemptEnd::kProcessDied;
    case WAIT_TIMEOUT:
      return AttemptEnd::kTimedOut;
    default:
      return AttemptEnd::kInterrupted;
  }
}

void AttemptProcess::Kill() {
  is_killed_ = true;
  // Harmless where it has ended by itself.
  TerminateProcess(process_.get(), static_cast<UINT>(ExitCode::kFailed));
  WaitForSingleObject(process_.get(), kEndMilliseconds);
}

}  // namespace brantel::host
