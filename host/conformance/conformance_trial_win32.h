#pragma once

#include <windows.h>

#include <optional>
#include <string>
#include <vector>

#include "host/outcome/command_failure.h"

namespace brantel::host {

// A trial runs in a process of its own, which a faulty host may end.
struct TrialRequest {
  HANDLE lines;  // a pipe, to which it tells what became of each check
  std::wstring library;
};

// The command line that makes this program run the trial.
std::wstring TrialCommandLine(const TrialRequest& request);

// The request, if these are the arguments of such a command line.
std::optional<TrialRequest> ReadTrialRequest(const std::vector<std::string>& arguments);

// Runs the trial: tries the callback objects of the library. kFailed when that cannot be loaded, or
// has no MakeNotifierHost, of which the pipe then tells in words behind "!".
ExitCode RunTrial(const TrialRequest& request);

}  // namespace brantel::host
