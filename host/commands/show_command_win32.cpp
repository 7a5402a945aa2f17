#include "host/commands/show_command.h"

#include "host/commands/command_context_win32.h"
#include "host/instances/instance_file_win32.h"
#include "host/instances/instance_text.h"
#include "host/system/file_path_win32.h"
#include "system/windows/utf8_text_win32.h"

namespace brantel::host {

ExitCode Run(const ShowCommand& command, const CommandContext& context) {
  const std::wstring path = FullPath(FromUtf8(command.file));
  InstanceFile file = ReadExistingInstance(path);
  if (!command.shows_secrets) HideSecrets(file);
  if (file.instance) context.report.Entry(InstanceText(file), InstanceRecord(file));
  if (!file.fault.empty()) {
    throw CommandFailure(ExitCode::kFailed, ToUtf8(path) + " " + file.fault);
  }
  return ExitCode::kDone;
}

}  // namespace brantel::host
