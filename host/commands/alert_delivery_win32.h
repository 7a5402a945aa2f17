#pragma once

#include <string>

#include "host/commands/alert_options.h"
#include "host/commands/command_context_win32.h"
#include "host/instances/instance_file.h"
#include "host/outcome/command_failure.h"

namespace brantel::host {

// An alert that a command delivers.
struct AlertToDeliver {
  std::string command;     // by its name, for the journal
  std::string class_name;  // as given
  std::string instance;    // the instance's name for the journal; empty where it has none
  std::wstring path;       // its file's, in full; empty where there is none
  InstanceFile file;       // what that holds, as far as it can be read
  std::wstring folder;     // in full, where the journal is if no other place is given; or empty
};

// Delivers the alert through the context's module file, or through the registered class, in a
// process of its own. Tells of its phases, its log as it comes, and what became of it; notes it in
// the journal before and after. Any result that is not negative counts as delivered. Throws
// CommandFailure when the alert could not be tried.
ExitCode DeliverAlert(const AlertToDeliver& alert, const AlertOptions& options,
                      const CommandContext& context);

}  // namespace brantel::host
