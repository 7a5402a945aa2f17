#pragma once

#include "host/commands/alert_options.h"
#include "host/commands/command_context_win32.h"
#include "host/delivery/delivery_win32.h"
#include "host/outcome/command_failure.h"

namespace brantel::host {

// Delivers the alert and tells of its phases, its log as it comes, and what became of it. Ctrl-C
// ends it. Throws CommandFailure when it could not be tried.
ExitCode DeliverAndTell(const AlertToDeliver& alert, const AlertOptions& options,
                        const CommandContext& context);

}  // namespace brantel::host
