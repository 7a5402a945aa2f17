#pragma once

#include <string>

#include "description/class_description.h"
#include "host/commands/command_context_win32.h"
#include "instance/instance_codec.h"

namespace brantel::host {

// Throws CommandFailure, as of invalid values, when doctor's rules tell of a failure of these
// values, with all of them and with what comes of it. Warnings go to the context's errors. The
// texts are as they are stored.
void CheckValues(const ClassDescription& notifier_class, const Instance& stored,
                 const std::string& consequence, const CommandContext& context);

// The same for an instance that is to be written.
void CheckBeforeWriting(const ClassDescription& notifier_class, const Instance& stored,
                        const CommandContext& context);

// Writes the instance to the file at this full path and tells so.
void WriteAndTell(const ClassDescription& notifier_class, const Instance& stored,
                  const std::wstring& path, const CommandContext& context);

}  // namespace brantel::host
