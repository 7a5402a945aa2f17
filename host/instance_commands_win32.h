#pragma once

#include "host/command_failure.h"
#include "host/command_line.h"
#include "host/output_stream_win32.h"

namespace brantel::host {

// Prints a table of the files in the directory. Throws CommandFailure when there is no such
// directory.
ExitCode Run(const InstancesCommand& command, const Invocation& invocation,
             const OutputStream& output);

// Prints the instance as its notifier reads it. Throws CommandFailure when there is no instance to
// be read, and also, after printing it, when the file is damaged.
ExitCode Run(const ShowCommand& command, const Invocation& invocation, const OutputStream& output);

// Writes the file. Throws CommandFailure when that does not succeed, when the file exists and may
// not be replaced, and when a field cannot have its value.
ExitCode Run(const NewCommand& command, const Invocation& invocation, const OutputStream& output);

// Prints a table of the class's fields.
ExitCode Run(const FieldsCommand& command, const Invocation& invocation,
             const OutputStream& output);

}  // namespace brantel::host
