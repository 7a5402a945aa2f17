#pragma once

#include "host/command_failure.h"
#include "host/command_line.h"
#include "host/output_stream_win32.h"

namespace brantel::host {

// Shows the class's dialog, through the invocation's module file or the registered class, and
// prints the log that comes meanwhile and then what became of the instance. Throws CommandFailure
// when there is no such directory, or no dialog to be had.
ExitCode Run(const AddCommand& command, const Invocation& invocation, const OutputStream& output);
ExitCode Run(const EditCommand& command, const Invocation& invocation, const OutputStream& output);

}  // namespace brantel::host
