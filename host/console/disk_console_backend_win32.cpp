#include "host/console/disk_console_backend_win32.h"

#include <windows.h>

#include "host/instances/instance_file_win32.h"
#include "host/journal/journal_path_win32.h"
#include "host/outcome/command_failure.h"
#include "host/system/code_page_text_win32.h"
#include "host/system/file_path_win32.h"
#include "host/system/running_process_win32.h"
#include "system/windows/utf8_text_win32.h"

namespace brantel::host {
namespace {

// Whoever follows the journal asks for it several times in a second.
constexpr std::chrono::milliseconds kLookTime{400};

std::string StoredPath(const std::wstring& directory) {
  auto stored = ToCodePage(ToUtf8(directory));
  if (!stored) {
    throw CommandFailure(
        ExitCode::kWrongUsage,
        "DIR: " + ToUtf8(directory) + " has characters that the system's code page lacks");
  }
  return *std::move(stored);
}

// Size and time of a file; empty when there is none.
std::string StateOfFile(const std::wstring& path) {
  WIN32_FILE_ATTRIBUTE_DATA data{};
  if (GetFileAttributesExW(path.c_str(), GetFileExInfoStandard, &data) == FALSE) return "";
  return std::to_string(data.nFileSizeLow) + " " +
         std::to_string(data.ftLastWriteTime.dwHighDateTime) + " " +
         std::to_string(data.ftLastWriteTime.dwLowDateTime);
}

}  // namespace

DiskConsoleBackend::DiskConsoleBackend(const SendSetup& setup)
    : directory_(setup.directory),
      stored_directory_(StoredPath(setup.directory)),
      machine_(setup.module_file),
      pages_(setup.module_file, ToUtf8(setup.directory)),
      journal_(JournalPath(setup.journal, setup.directory), RotatedFile::Durability::kComputer),
      desk_(setup) {}

std::vector<InstanceFile> DiskConsoleBackend::ReadInstances() {
  return ReadInstanceDirectory(directory_);
}

bool DiskConsoleBackend::MakeFolder(const std::string& path) {
  return CreateDirectoryA(path.c_str(), nullptr) != FALSE || GetLastError() == ERROR_ALREADY_EXISTS;
}

std::vector<std::string> DiskConsoleBackend::FilesIn(const std::string& folder) {
  const std::wstring path = FromUtf8(FromCodePage(folder));
  std::vector<std::string> names;
  if (!IsDirectory(path)) return names;
  for (const std::wstring& name : host::FilesIn(path))
    names.push_back(ToUtf8(name));
  return names;
}

std::optional<std::string> DiskConsoleBackend::AddPage(const ClassDescription& notifier_class) {
  return pages_.AddPage(notifier_class);
}

std::optional<std::string> DiskConsoleBackend::EditPage(const ClassDescription& notifier_class,
                                                        const std::string& name) {
  return pages_.EditPage(notifier_class, name);
}

bool DiskConsoleBackend::SubmitForm(const ClassDescription& notifier_class,
                                    const std::optional<std::string>& edited,
                                    const std::string& form) {
  return pages_.SubmitForm(notifier_class, edited, form);
}

std::optional<std::string> DiskConsoleBackend::BeginSend(const SendOrder& order) {
  return desk_.Begin(order);
}

std::optional<SendProgress> DiskConsoleBackend::ProgressOf(const std::string& id) {
  return desk_.ProgressOf(id);
}

const std::vector<JournalEntry>& DiskConsoleBackend::Journal() {
  const auto now = std::chrono::steady_clock::now();
  if (looked_ && now - *looked_ < kLookTime) return entries_;
  looked_ = now;
  std::string state = StateOfFile(journal_.path()) + "," + StateOfFile(journal_.path() + L".1");
  if (state == seen_) return entries_;
  entries_ = ReadJournal(journal_.Read());
  seen_ = std::move(state);
  return entries_;
}

bool DiskConsoleBackend::RunsStill(const JournalEntry& entry) {
  return entry.machine == ComputerName() && IsRunning(entry.process, entry.began);
}

}  // namespace brantel::host
