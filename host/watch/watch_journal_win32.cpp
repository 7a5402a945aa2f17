#include "host/watch/watch_journal_win32.h"

#include <algorithm>
#include <utility>

#include "host/outcome/command_failure.h"
#include "host/outcome/system_error_text_win32.h"
#include "host/system/file_path_win32.h"
#include "system/windows/utf8_text_win32.h"

namespace brantel::host {
namespace {

constexpr DWORD kPollMilliseconds = 10;
constexpr int kOpenPolls = 200;

LONGLONG SizeOf(const Handle& file) {
  LARGE_INTEGER size{};
  return file && GetFileSizeEx(file.get(), &size) != FALSE ? size.QuadPart : 0;
}

// Nothing when it cannot be read.
std::optional<std::string> ReadFrom(const Handle& file, LONGLONG start) {
  LARGE_INTEGER place{};
  place.QuadPart = start;
  std::string content(static_cast<std::size_t>(std::max(SizeOf(file) - start, LONGLONG{0})), '\0');
  DWORD read = 0;
  if (SetFilePointerEx(file.get(), place, nullptr, FILE_BEGIN) == FALSE ||
      ReadFile(file.get(), content.data(), static_cast<DWORD>(content.size()), &read, nullptr) ==
          FALSE)
    return std::nullopt;
  content.resize(read);
  return content;
}

// Writes at the end, and onto the disk, if it is to survive the computer.
std::optional<std::string> Write(const Handle& file, std::string_view bytes,
                                 bool survives_computer) {
  DWORD written = 0;
  if (SetFilePointer(file.get(), 0, nullptr, FILE_END) == INVALID_SET_FILE_POINTER ||
      WriteFile(file.get(), bytes.data(), static_cast<DWORD>(bytes.size()), &written, nullptr) ==
          FALSE)
    return SystemErrorText(GetLastError());
  if (written != bytes.size()) return SystemErrorText(ERROR_DISK_FULL);
  if (survives_computer && FlushFileBuffers(file.get()) == FALSE)
    return SystemErrorText(GetLastError());
  return std::nullopt;
}

// Whether anybody is told, or will be, because of it. What is up for the first time, a thousand
// items at the start, does not need the disk.
bool HasConsequences(const WatchRecord& record) {
  const auto* const change = std::get_if<StatusChange>(&record.event);
  if (change != nullptr) return change->incident != 0;
  return !std::holds_alternative<WatchNote>(record.event);
}

CommandFailure Unreadable(const std::wstring& path, DWORD error) {
  return {ExitCode::kFailed,
          "the journal " + ToUtf8(path) + " cannot be read: " + SystemErrorText(error)};
}

bool Move(const std::wstring& from, const std::wstring& to) {
  return MoveFileExW(from.c_str(), to.c_str(),
                     MOVEFILE_REPLACE_EXISTING | MOVEFILE_WRITE_THROUGH) != FALSE;
}

}  // namespace

// Whoever writes has it for himself, and while it is replaced there is none for a moment; neither
// takes long.
Handle WatchJournalFile::Open(DWORD access, DWORD disposition) const {
  const DWORD share =
      FILE_SHARE_READ | FILE_SHARE_DELETE | (access == GENERIC_READ ? DWORD{FILE_SHARE_WRITE} : 0);
  for (int poll = 0;; ++poll) {
    Handle file(CreateFileW(path_.c_str(), access, share, nullptr, disposition,
                            FILE_ATTRIBUTE_NORMAL, nullptr));
    const DWORD error = file ? ERROR_SUCCESS : GetLastError();
    const bool is_replaced = error == ERROR_FILE_NOT_FOUND && WasReplaced();
    if ((error != ERROR_SHARING_VIOLATION && !is_replaced) || poll == kOpenPolls) {
      SetLastError(error);
      return file;
    }
    Sleep(kPollMilliseconds);
  }
}

// Asked behind a moment in which there was none.
bool WatchJournalFile::WasReplaced() const {
  return FileExists(NewPath()) || FileExists(path_);
}

bool WatchJournalFile::Claim() {
  claim_ =
      Handle(CreateFileW((path_ + L".running").c_str(), GENERIC_WRITE, 0, nullptr, CREATE_ALWAYS,
                         FILE_ATTRIBUTE_TEMPORARY | FILE_FLAG_DELETE_ON_CLOSE, nullptr));
  if (!claim_) return false;
  FinishReplacing();
  return true;
}

// Between the two moves of Replace the process may have been killed. What was begun before them has
// not replaced anything yet.
void WatchJournalFile::FinishReplacing() const {
  if (FileExists(path_))
    DeleteFileW(NewPath().c_str());
  else
    Move(NewPath(), path_);
}

std::vector<WatchRecord> WatchJournalFile::Read() {
  const Handle file = Open(GENERIC_READ, OPEN_EXISTING);
  if (!file) {
    const DWORD error = GetLastError();
    if (error == ERROR_FILE_NOT_FOUND || error == ERROR_PATH_NOT_FOUND) return {};
    throw Unreadable(path_, error);
  }
  const std::optional<std::string> content = ReadFrom(file, 0);
  if (!content) throw Unreadable(path_, GetLastError());
  end_ = static_cast<LONGLONG>(content->size());
  return ReadWatchLines(*content);
}

void WatchJournalFile::ReadForeign(const Handle& file) {
  const std::string added = ReadFrom(file, end_).value_or("");
  end_ += static_cast<LONGLONG>(added.size());
  foreign_ += added;
}

std::optional<std::string> WatchJournalFile::Append(const WatchRecord& record) {
  // What others made anew would be gone when the file is replaced.
  const Handle file = Open(GENERIC_READ | GENERIC_WRITE, claim_ ? OPEN_ALWAYS : OPEN_EXISTING);
  if (!file) return SystemErrorText(GetLastError());
  ReadForeign(file);
  // The last line may have been cut off by a kill.
  const bool is_within_line = end_ > 0 && ReadFrom(file, end_ - 1) != "\n";
  auto error =
      Write(file, (is_within_line ? "\n" : "") + WatchLine(record), HasConsequences(record));
  end_ = SizeOf(file);
  return error;
}

std::vector<WatchRecord> WatchJournalFile::TakeForeign() {
  ReadForeign(Open(GENERIC_READ, OPEN_EXISTING));
  // A line that is still being written is left for the next time.
  const std::size_t size = foreign_.rfind('\n') + 1;
  const std::string lines = foreign_.substr(0, size);
  foreign_.erase(0, size);
  return ReadWatchLines(lines);
}

std::optional<std::string> WatchJournalFile::Replace(const std::vector<WatchRecord>& records) {
  std::string content;
  for (const WatchRecord& record : records)
    content += WatchLine(record);
  {
    const Handle file(CreateFileW(NewPath().c_str(), GENERIC_WRITE, 0, nullptr, CREATE_ALWAYS,
                                  FILE_ATTRIBUTE_NORMAL, nullptr));
    if (!file) return SystemErrorText(GetLastError());
    if (auto error = Write(file, content, true)) return error;
  }
  // Nobody adds anything to the old file any more when it is moved away.
  const Handle held = Open(GENERIC_READ | GENERIC_WRITE, OPEN_EXISTING);
  if (!held || SizeOf(held) != end_) return "somebody else writes to it";
  if (!Move(path_, path_ + L".1") || !Move(NewPath(), path_))
    return SystemErrorText(GetLastError());
  end_ = static_cast<LONGLONG>(content.size());
  return std::nullopt;
}

}  // namespace brantel::host
