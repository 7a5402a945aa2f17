#include "host/conformance/conformance_trial_win32.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <cstddef>
#include <cstdint>
#include <string_view>

#include "host/conformance/attempt_win32.h"
#include "host/conformance/conformance_check.h"
#include "host/conformance/event_attempts_win32.h"
#include "host/conformance/log_attempts_win32.h"
#include "host/conformance/object_attempts_win32.h"
#include "host/conformance/text_attempts_win32.h"
#include "host/conformance/tried_library_win32.h"
#include "host/conformance/worker_attempt_win32.h"
#include "system/windows/utf8_text_win32.h"

namespace brantel::host {
namespace {

// No command of that name: who starts the program so knows what comes behind.
constexpr const char* kTrialArgument = "--try-host";

// The checks, each with what tries it.
struct NamedAttempt {
  std::string_view check;
  Attempt attempt;
};

constexpr std::array kAttempts = {NamedAttempt{"interface", TryInterface},
                                  NamedAttempt{"identity", TryIdentity},
                                  NamedAttempt{"unknown interface", TryUnknownInterface},
                                  NamedAttempt{"references", TryReferences},
                                  NamedAttempt{"texts", TryTexts},
                                  NamedAttempt{"words", TryWords},
                                  NamedAttempt{"old text", TryOldText},
                                  NamedAttempt{"log text", TryLogText},
                                  NamedAttempt{"log", TryLog},
                                  NamedAttempt{"event", TryEvent},
                                  NamedAttempt{"no event", TryNoEvent},
                                  NamedAttempt{"worker", TryWorker},
                                  NamedAttempt{"end", TryEnd}};
static_assert(std::ranges::equal(kAttempts, kConformanceChecks, {}, &NamedAttempt::check,
                                 &ConformanceCheck::name));

void Write(HANDLE pipe, const std::string& line) {
  DWORD written = 0;
  WriteFile(pipe, line.data(), static_cast<DWORD>(line.size()), &written, nullptr);
}

// Ends the process at once, without the system's window and without a debugger.
LONG WINAPI EndProcess(EXCEPTION_POINTERS* exception) {
  TerminateProcess(GetCurrentProcess(), exception->ExceptionRecord->ExceptionCode);
  return EXCEPTION_EXECUTE_HANDLER;
}

}  // namespace

std::wstring TrialCommandLine(const TrialRequest& request) {
  return L"notifyhost " + FromUtf8(kTrialArgument) + L" " +
         std::to_wstring(reinterpret_cast<std::uintptr_t>(request.lines)) + L" \"" +
         request.library + L"\"";
}

std::optional<TrialRequest> ReadTrialRequest(const std::vector<std::string>& arguments) {
  if (arguments.size() != 3 || arguments[0] != kTrialArgument) return std::nullopt;
  std::uintptr_t handle = 0;
  std::from_chars(arguments[1].data(), arguments[1].data() + arguments[1].size(), handle);
  return TrialRequest{reinterpret_cast<HANDLE>(handle), FromUtf8(arguments[2])};
}

ExitCode RunTrial(const TrialRequest& request) {
  SetUnhandledExceptionFilter(EndProcess);
  try {
    const TriedLibrary library(request.library);
    for (std::size_t check = 0; check < kConformanceChecks.size(); ++check) {
      Write(request.lines, BeginLine(kConformanceChecks.at(check)));
      const Seen seen = OutcomeOf(kAttempts.at(check).attempt, library);
      Write(request.lines, EndLine(seen.state, seen.words));
    }
  } catch (const NoObject& reason) {
    Write(request.lines, "!" + std::string(reason.what()));
    return ExitCode::kFailed;
  }
  return ExitCode::kDone;
}

}  // namespace brantel::host
