#include "host/commands/instances_command.h"

#include <vector>

#include "host/commands/command_context_win32.h"
#include "host/instances/instance_file_win32.h"
#include "host/instances/instance_text.h"
#include "host/system/file_path_win32.h"
#include "system/windows/utf8_text_win32.h"

namespace brantel::host {

ExitCode Run(const InstancesCommand& command, const CommandContext& context) {
  const std::wstring directory = ExistingDirectory(FromUtf8(command.directory));
  std::vector<InstanceFile> files = ReadInstanceDirectory(directory);
  if (files.empty()) {
    context.report.Prose("There are no files in " + ToUtf8(directory) + ".\n");
    return ExitCode::kNothingMatched;
  }
  if (!command.shows_secrets) {
    for (InstanceFile& file : files)
      HideSecrets(file);
  }
  context.report.Prose("Instances in " + ToUtf8(directory) + "\n\n");
  WriteInstanceTable(context.report, files);
  return ExitCode::kDone;
}

}  // namespace brantel::host
