#pragma once

#include <optional>
#include <string>
#include <vector>

#include "host/outcome/command_failure.h"

namespace brantel::host {

// The command line that makes this program deliver the alert of which it is told by a pipe.
std::wstring AttemptCommandLine(const std::wstring& pipe_name);

// The pipe's name, if these are the arguments of such a command line.
std::optional<std::wstring> AttemptPipeName(const std::vector<std::string>& arguments);

// Delivers the alert and tells of it through the pipe.
ExitCode ServeAttempt(const std::wstring& pipe_name);

}  // namespace brantel::host
