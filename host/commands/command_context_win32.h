#pragma once

#include <optional>
#include <string>

#include "host/commands/command.h"
#include "host/system/output_stream_win32.h"

namespace brantel::host {

// What every command runs with.
struct CommandContext {
  const std::optional<std::string>& module_file;  // the one of --module (UTF-8), if that is given
  const OutputStream& output;
};

}  // namespace brantel::host
