#include "host/commands/set_command.h"

#include "host/commands/written_instance_win32.h"
#include "host/instances/instance_file_win32.h"
#include "host/system/code_page_text_win32.h"
#include "host/system/file_path_win32.h"
#include "system/windows/utf8_text_win32.h"

namespace brantel::host {

ExitCode Run(const SetCommand& command, const CommandContext& context) {
  if (command.values.empty()) throw CommandFailure(ExitCode::kWrongUsage, "FIELDS is missing");
  const std::wstring path = FullPath(FromUtf8(command.file));
  const InstanceFile file = ReadExistingInstance(path);
  if (!file.stored) throw CommandFailure(ExitCode::kFailed, ToUtf8(path) + " " + file.fault);
  const ClassDescription& notifier_class = FindDescription(file.layout->class_name);
  const Instance changed =
      ChangeInstance(notifier_class.instances, *file.stored, command.values, ToCodePage);
  if (!command.is_unchecked) CheckBeforeWriting(notifier_class, changed, context);
  WriteAndTell(notifier_class, changed, path, context);
  return ExitCode::kDone;
}

}  // namespace brantel::host
