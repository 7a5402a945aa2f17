#pragma once

#include "host/command_failure.h"
#include "host/command_line.h"
#include "host/output_stream_win32.h"

namespace brantel::host {

// Delivers the alert through the invocation's module file, or through the registered class, prints
// the alert's log as it comes and then the outcome. Any result that is not negative counts as
// delivered. Throws CommandFailure when no notifier could be had.
ExitCode Run(const SendCommand& command, const Invocation& invocation, const OutputStream& output);

}  // namespace brantel::host
