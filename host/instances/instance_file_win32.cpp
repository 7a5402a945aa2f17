#include "host/instances/instance_file_win32.h"

#include <windows.h>

#include <optional>

#include "host/instances/instance_text.h"
#include "host/instances/journal_name.h"
#include "host/outcome/command_failure.h"
#include "host/outcome/system_error_text_win32.h"
#include "host/system/code_page_text_win32.h"
#include "host/system/file_path_win32.h"
#include "instance/instance_files_win32.h"
#include "system/windows/utf8_text_win32.h"

namespace brantel::host {

InstanceFile ReadInstanceFile(const std::wstring& path) {
  const std::string name = ToUtf8(path.substr(path.rfind(L'\\') + 1));
  const auto stored_path = ToCodePage(ToUtf8(path));
  if (!stored_path) {
    return {.name = name, .fault = "has a path with characters that the system's code page lacks"};
  }
  const auto unreadable = [&](DWORD error) -> InstanceFile {
    return {.name = name, .fault = "cannot be read: " + SystemErrorText(error)};
  };
  const auto content = DiskInstanceFiles().Open(*stored_path);
  if (!content) return unreadable(GetLastError());
  try {
    return ExamineInstanceFile(name, *content, FromCodePage);
  } catch (const ReadFailure& failure) {
    return unreadable(failure.error);
  }
}

InstanceFile ReadExistingInstance(const std::wstring& path) {
  if (!FileExists(path)) {
    throw CommandFailure(ExitCode::kFailed, "there is no file " + ToUtf8(path));
  }
  if (IsDirectory(path)) {
    throw CommandFailure(ExitCode::kFailed, ToUtf8(path) + " is a directory");
  }
  return ReadInstanceFile(path);
}

std::vector<InstanceFile> ReadInstanceDirectory(const std::wstring& directory) {
  std::vector<InstanceFile> files;
  for (const std::wstring& name : FilesIn(directory)) {
    if (IsJournalName(ToUtf8(name))) continue;
    std::wstring file = directory;
    file.append(L"\\").append(name);
    files.push_back(ReadInstanceFile(file));
  }
  SortByName(files);
  return files;
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

}  // namespace brantel::host
