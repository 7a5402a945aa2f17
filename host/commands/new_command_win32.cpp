#include "host/commands/new_command.h"

#include "host/commands/written_instance_win32.h"
#include "host/instances/instance_file.h"
#include "host/system/code_page_text_win32.h"
#include "host/system/file_path_win32.h"
#include "system/windows/utf8_text_win32.h"

namespace brantel::host {
namespace {

void CheckMayWrite(const std::wstring& path, bool replaces) {
  if (IsDirectory(path)) {
    throw CommandFailure(ExitCode::kFailed, ToUtf8(path) + " is a directory");
  }
  if (!replaces && FileExists(path)) {
    throw CommandFailure(ExitCode::kFailed, ToUtf8(path) + " exists; --force replaces it");
  }
}

std::u16string ToUtf16(std::string_view text) {
  const std::wstring wide = FromUtf8(text);
  return {wide.begin(), wide.end()};
}

}  // namespace

ExitCode Run(const NewCommand& command, const CommandContext& context) {
  const ClassDescription& notifier_class = FindDescription(command.class_name);
  CheckInstanceFileName(command.file, ToUtf16);
  const Instance stored = MakeInstance(notifier_class.instances, command.values, ToCodePage);
  const std::wstring path = FullPath(FromUtf8(command.file));
  CheckMayWrite(path, command.replaces);
  if (!command.is_unchecked) CheckBeforeWriting(notifier_class, stored, context);
  WriteAndTell(notifier_class, stored, path, context);
  return ExitCode::kDone;
}

}  // namespace brantel::host
