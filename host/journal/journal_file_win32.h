#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <utility>

namespace brantel::host {

// A journal on disk: a file, and older ones beside it, by "1" to "4" behind its name, into which it
// is put when it has grown beyond a megabyte. Several hosts may write to it.
class JournalFile {
 public:
  explicit JournalFile(std::wstring path) : path_(std::move(path)) {}

  [[nodiscard]] const std::wstring& path() const { return path_; }

  // Adds the line; it is on the disk on return. Why not, when it could not be.
  [[nodiscard]] std::optional<std::string> Append(std::string_view line) const;

  // All that there is, the oldest first; empty when there is no journal.
  [[nodiscard]] std::string Read() const;

 private:
  class Lock;

  [[nodiscard]] std::wstring OlderPath(int age) const;
  void RotateIfFull() const;

  std::wstring path_;
};

}  // namespace brantel::host
