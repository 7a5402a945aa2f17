#include "host/commands/instance_commands.h"

#include <string>
#include <vector>

#include "host/commands/command_context_win32.h"
#include "host/instances/class_fields.h"
#include "host/instances/instance_file_win32.h"
#include "host/instances/instance_text.h"
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

ExitCode Run(const InstancesCommand& command, const CommandContext& context) {
  const std::wstring directory = ExistingDirectory(FromUtf8(command.directory));
  std::vector<InstanceFile> files;
  for (const std::wstring& name : FilesIn(directory)) {
    std::wstring file = directory;
    file.append(L"\\").append(name);
    files.push_back(ReadInstanceFile(file));
  }
  if (files.empty()) {
    context.output.Write("There are no files in " + ToUtf8(directory) + ".\n");
  } else {
    context.output.Write("Instances in " + ToUtf8(directory) + "\n\n" +
                         InstanceTable(std::move(files)));
  }
  return ExitCode::kDone;
}

ExitCode Run(const ShowCommand& command, const CommandContext& context) {
  const std::wstring path = FullPath(FromUtf8(command.file));
  if (!FileExists(path)) {
    throw CommandFailure(ExitCode::kFailed, "there is no file " + ToUtf8(path));
  }
  if (IsDirectory(path)) {
    throw CommandFailure(ExitCode::kFailed, ToUtf8(path) + " is a directory");
  }
  const InstanceFile file = ReadInstanceFile(path);
  if (file.instance)
    context.output.Write(command.as_json ? InstanceJson(file) : InstanceText(file));
  if (!file.fault.empty()) {
    throw CommandFailure(ExitCode::kFailed, ToUtf8(path) + " " + file.fault);
  }
  return ExitCode::kDone;
}

ExitCode Run(const NewCommand& command, const CommandContext& context) {
  const InstanceLayout& layout = FindLayout(command.class_name);
  CheckInstanceFileName(command.file, ToUtf16);
  const Instance instance = MakeInstance(layout, command.values, ToCodePage);
  const std::wstring path = FullPath(FromUtf8(command.file));
  CheckMayWrite(path, command.replaces);
  WriteInstanceFile(path, EncodeInstance(layout, instance));
  context.output.Write("Wrote the " + std::string(layout.class_name) + " instance " + ToUtf8(path) +
                       ".\n");
  return ExitCode::kDone;
}

ExitCode Run(const FieldsCommand& command, const CommandContext& context) {
  const InstanceLayout& layout = FindLayout(command.class_name);
  context.output.Write("Fields of " + std::string(layout.class_name) + "\n\n" + FieldTable(layout));
  return ExitCode::kDone;
}

}  // namespace brantel::host
