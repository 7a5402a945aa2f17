#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <utility>

namespace brantel::host {

// A file of lines that grows, and older ones beside it, by "1" to "4" behind its name, into which
// it is put when it has grown beyond a megabyte. Several hosts may write to it.
class RotatedFile {
 public:
  // What a line on return has to survive: this process, or the whole computer.
  enum class Durability { kProcess, kComputer };

  RotatedFile(std::wstring path, Durability durability)
      : path_(std::move(path)), durability_(durability) {}

  [[nodiscard]] const std::wstring& path() const { return path_; }

  // Adds the line, which has its end. Why not, when it could not be.
  [[nodiscard]] std::optional<std::string> Append(std::string_view line) const;

  // All that there is, the oldest first; empty when there is no such file.
  [[nodiscard]] std::string Read() const;

 private:
  class Lock;

  [[nodiscard]] std::wstring OlderPath(int age) const;
  void RotateIfFull() const;

  std::wstring path_;
  Durability durability_;
};

}  // namespace brantel::host
