#include "host/commands/conformance_command.h"

#include "host/commands/command_context_win32.h"
#include "host/conformance/conformance_check.h"
#include "host/conformance/conformance_process_win32.h"
#include "host/system/file_path_win32.h"
#include "system/windows/utf8_text_win32.h"

namespace brantel::host {

ExitCode Run(const ConformanceCommand& command, const CommandContext& context) {
  const std::wstring library = FullPath(FromUtf8(command.file));
  if (!FileExists(library))
    throw CommandFailure(ExitCode::kFailed, "there is no file " + ToUtf8(library));
  const int broken = WriteConformance(context.report, TryHost(library));
  return broken == 0 ? ExitCode::kDone : ExitCode::kFailed;
}

}  // namespace brantel::host
