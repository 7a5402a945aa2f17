#pragma once

#include <optional>
#include <string>

#include "host/commands/command.h"
#include "host/report/report_writer.h"
#include "host/text/text_sink.h"

namespace brantel::host {

// What every command runs with.
struct CommandContext {
  const std::optional<std::string>& module_file;  // the one of --module (UTF-8), if that is given
  const ReportWriter& report;                     // what is told
  const TextSink& output;                         // where logs and what is exported go as they are
  const TextSink& errors;                         // what a person should know beside the report
};

}  // namespace brantel::host
