#pragma once

#include "host/command_failure.h"
#include "host/command_line.h"
#include "host/output_stream_win32.h"

namespace brantel::host {

// Runs the command on the invocation's module file, or on the one beside the host. Throws
// CommandFailure when that does not succeed.
ExitCode Run(const ClassesCommand& command, const Invocation& invocation,
             const OutputStream& output);
ExitCode Run(const RegisterCommand& command, const Invocation& invocation,
             const OutputStream& output);
ExitCode Run(const UnregisterCommand& command, const Invocation& invocation,
             const OutputStream& output);

}  // namespace brantel::host
