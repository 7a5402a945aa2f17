#pragma once

#include <windows.h>

#include <chrono>
#include <optional>
#include <string>

#include "host/attempt/alert_request.h"
#include "host/attempt/attempt_message.h"
#include "host/course/alert_course.h"
#include "host/text/line_assembler.h"
#include "system/windows/handle_win32.h"

namespace brantel::host {

using Deadline = std::optional<std::chrono::steady_clock::time_point>;

// A process of this program that delivers one alert. A call into a notifier cannot be recalled, but
// its process can be ended, and what it had open is closed then. It ends with the object at the
// latest, and also when this process is ended. Programs that the alert has started live on.
class AttemptProcess {
 public:
  // Starts the process. Waits for it end when the event `stop` is signalled, unless that is null.
  // Throws CommandFailure when the start does not succeed.
  explicit AttemptProcess(HANDLE stop);
  AttemptProcess(const AttemptProcess&) = delete;
  AttemptProcess& operator=(const AttemptProcess&) = delete;
  ~AttemptProcess() { Kill(); }

  // Hands the request on. False when the process, or the wait for it, ended before it took it.
  bool Deliver(const AlertRequest& request, const Deadline& deadline);

  // Waits for what it tells next. Nothing when the process, or the wait, has ended before.
  std::optional<AttemptMessage> NextMessage(const Deadline& deadline);

  // Why the last of these came to nothing; kProcessDied also where all was told before.
  [[nodiscard]] AttemptEnd end() const { return end_; }

  // Ends the process. What it has told before can still be read, without a wait.
  void Kill();

 private:
  void Start();
  void EndWithThisProcess();
  bool Connect(const Deadline& deadline);
  template <typename Operation>
  std::optional<DWORD> Transfer(Operation operation, const Deadline& deadline);
  std::optional<DWORD> FinishTransfer(const Deadline& deadline);
  AttemptEnd WaitForTransfer(const Deadline& deadline);

  const HANDLE stop_;
  std::wstring pipe_name_;
  Handle pipe_;
  Handle transfer_done_;
  OVERLAPPED transfer_{};
  Handle job_;
  Handle process_;
  bool is_killed_ = false;
  AttemptEnd end_ = AttemptEnd::kReturned;
  LineAssembler lines_;
};

}  // namespace brantel::host
