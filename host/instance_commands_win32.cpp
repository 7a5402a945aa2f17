#include "host/instance_commands_win32.h"

#include <windows.h>

#include <optional>
#include <string>
#include <vector>

#include "framework/instance_files_win32.h"
#include "framework/utf8_text_win32.h"
#include "host/class_fields.h"
#include "host/code_page_text_win32.h"
#include "host/file_path_win32.h"
#include "host/instance_file.h"
#include "host/instance_text.h"
#include "host/system_error_text_win32.h"

namespace brantel::host {
namespace {

InstanceFile ReadInstanceFile(const std::wstring& path) {
  const std::string name = ToUtf8(path.substr(path.rfind(L'\\') + 1));
  const auto stored_path = ToCodePage(ToUtf8(path));
  if (!stored_path) {
    return {name, nullptr, std::nullopt,
            "has a path with characters that the system's code page lacks"};
  }
  const auto content = DiskInstanceFiles().Read(*stored_path);
  if (!content) {
    return {name, nullptr, std::nullopt, "cannot be read: " + SystemErrorText(GetLastError())};
  }
  return ExamineInstanceFile(name, *content, FromCodePage);
}

void CheckMayWrite(const std::wstring& path, bool replaces) {
  if (IsDirectory(path)) {
    throw CommandFailure(ExitCode::kFailed, ToUtf8(path) + " is a directory");
  }
  if (!replaces && FileExists(path)) {
    throw CommandFailure(ExitCode::kFailed, ToUtf8(path) + " exists; --force replaces it");
  }
}

void WriteInstanceFile(const std::wstring& path, std::string_view content) {
  const auto stored_path = ToCodePage(ToUtf8(path));
  if (!stored_path) {
    throw CommandFailure(
        ExitCode::kWrongUsage,
        "FILE: " + ToUtf8(path) + " has characters that the system's code page lacks");
  }
  if (!DiskInstanceFiles().Write(*stored_path, content)) {
    const DWORD error = GetLastError();
    throw CommandFailure(ExitCode::kFailed,
                         ToUtf8(path) + " cannot be written: " + SystemErrorText(error));
  }
}

}  // namespace

ExitCode Run(const InstancesCommand& command, const Invocation&, const OutputStream& output) {
  const std::wstring directory = ExistingDirectory(FromUtf8(command.directory));
  std::vector<InstanceFile> files;
  for (const std::wstring& name : FilesIn(directory)) {
    std::wstring file = directory;
    file.append(L"\\").append(name);
    files.push_back(ReadInstanceFile(file));
  }
  if (files.empty()) {
    output.Write("There are no files in " + ToUtf8(directory) + ".\n");
  } else {
    output.Write("Instances in " + ToUtf8(directory) + "\n\n" + InstanceTable(std::move(files)));
  }
  return ExitCode::kDone;
}

ExitCode Run(const ShowCommand& command, const Invocation&, const OutputStream& output) {
  const std::wstring path = FullPath(FromUtf8(command.file));
  if (!FileExists(path)) {
    throw CommandFailure(ExitCode::kFailed, "there is no file " + ToUtf8(path));
  }
  if (IsDirectory(path)) {
    throw CommandFailure(ExitCode::kFailed, ToUtf8(path) + " is a directory");
  }
  const InstanceFile file = ReadInstanceFile(path);
  if (file.instance) output.Write(command.as_json ? InstanceJson(file) : InstanceText(file));
  if (!file.fault.empty()) {
    throw CommandFailure(ExitCode::kFailed, ToUtf8(path) + " " + file.fault);
  }
  return ExitCode::kDone;
}

ExitCode Run(const NewCommand& command, const Invocation&, const OutputStream& output) {
  const InstanceLayout& layout = FindLayout(command.class_name);
  CheckInstanceFileName(command.file);
  const Instance instance = MakeInstance(layout, command.values, ToCodePage);
  const std::wstring path = FullPath(FromUtf8(command.file));
  CheckMayWrite(path, command.replaces);
  WriteInstanceFile(path, EncodeInstance(layout, instance));
  output.Write("Wrote the " + std::string(layout.class_name) + " instance " + ToUtf8(path) + ".\n");
  return ExitCode::kDone;
}

ExitCode Run(const FieldsCommand& command, const Invocation&, const OutputStream& output) {
  const InstanceLayout& layout = FindLayout(command.class_name);
  output.Write("Fields of " + std::string(layout.class_name) + "\n\n" + FieldTable(layout));
  return ExitCode::kDone;
}

}  // namespace brantel::host
