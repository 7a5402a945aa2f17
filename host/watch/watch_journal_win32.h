#pragma once

#include <windows.h>

#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "host/watch/watch_record.h"
#include "system/windows/handle_win32.h"

namespace brantel::host {

// The file in which a watch keeps what it goes by. One process writes to it, and others may add
// acknowledgements.
class WatchJournalFile {
 public:
  explicit WatchJournalFile(std::wstring path) : path_(std::move(path)) {}

  [[nodiscard]] const std::wstring& path() const { return path_; }

  // All that it says. Nothing when there is none. Throws CommandFailure when it cannot be read: who
  // took that for an empty one would forget what is to be told.
  std::vector<WatchRecord> Read();

  // Keeps other watches from the file, until the object ends. False when another one has it.
  bool Claim();

  // Adds the record. On return it survives the process, and what somebody is told because of also
  // the computer. Why not, when it could not be.
  std::optional<std::string> Append(const WatchRecord& record);

  // What others have added since this object has read or written it.
  std::vector<WatchRecord> TakeForeign();

  // Whether it has grown so much that it should be written anew.
  [[nodiscard]] bool is_full() const { return end_ > kFullBytes; }

  // Puts these records into the place of all. A kill at any moment leaves the one or the other. The
  // old file stays as PATH.1. Why not, when it could not be done.
  std::optional<std::string> Replace(const std::vector<WatchRecord>& records);

 private:
  static constexpr LONGLONG kFullBytes = LONGLONG{1024} * 1024;

  [[nodiscard]] std::wstring NewPath() const { return path_ + L".new"; }
  [[nodiscard]] bool WasReplaced() const;
  void FinishReplacing() const;
  [[nodiscard]] Handle Open(DWORD access, DWORD disposition) const;
  void ReadForeign(const Handle& file);

  std::wstring path_;
  Handle claim_;
  LONGLONG end_ = 0;  // up to which it is known
  std::string foreign_;
};

}  // namespace brantel::host
