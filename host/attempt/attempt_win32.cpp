#include "host/attempt/attempt_win32.h"

#include "host/attempt/attempt_process_win32.h"

namespace brantel::host {
namespace {

// How long a notifier may take to shut down after its answer.
constexpr std::chrono::seconds kShutdownTime{10};

// How long what a process has told before its end may be on its way.
constexpr std::chrono::seconds kLastWordsTime{2};

// Notes what the process tells of.
struct Listener {
  void operator()(const LoggedText& logged) const { take_log(logged.text); }
  void operator()(const SendResult& sent) const { outcome.result = sent.result; }
  void operator()(const AttemptFault& fault) const { outcome.fault = fault; }

  const LogTaker& take_log;
  AttemptOutcome& outcome;
};

Deadline DeadlineIn(std::optional<std::chrono::milliseconds> time) {
  if (!time) return std::nullopt;
  return std::chrono::steady_clock::now() + *time;
}

// Listens until the process has ended, or the wait for it.
void Listen(AttemptProcess& process, Deadline deadline, const Listener& listener) {
  while (const auto message = process.NextMessage(deadline)) {
    std::visit(listener, *message);
    if (std::holds_alternative<SendResult>(*message)) deadline = DeadlineIn(kShutdownTime);
  }
}

}  // namespace

AttemptOutcome RunAttempt(const AlertRequest& request,
                          std::optional<std::chrono::milliseconds> time_limit, HANDLE stop,
                          const LogTaker& take_log) {
  const Deadline deadline = DeadlineIn(time_limit);
  AttemptOutcome outcome;
  const Listener listener{take_log, outcome};
  AttemptProcess process(stop);
  if (process.Deliver(request, deadline)) Listen(process, deadline, listener);
  outcome.end = process.end();
  process.Kill();
  // A driver may hold the process for longer than anybody wants to wait.
  Listen(process, DeadlineIn(kLastWordsTime), listener);
  if (outcome.result || outcome.fault) outcome.end = AttemptEnd::kReturned;
  return outcome;
}

}  // namespace brantel::host
