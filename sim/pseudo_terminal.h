#pragma once

#include <filesystem>
#include <optional>
#include <string>
#include <string_view>

namespace brantel::sim {

// Owns a file descriptor.
class FileDescriptor {
 public:
  FileDescriptor() = default;
  explicit FileDescriptor(int number) : number_(number) {}
  FileDescriptor(FileDescriptor&& other) noexcept;
  FileDescriptor& operator=(FileDescriptor&& other) noexcept;
  ~FileDescriptor();

  [[nodiscard]] int get() const { return number_; }

 private:
  int number_ = -1;
};

// A pseudo-terminal that others open as a serial port. It is there until the object is destroyed,
// whether or not somebody has it open. Throws std::system_error when the system has none, or when
// the link cannot be made.
class PseudoTerminal {
 public:
  // With a `link`, a symbolic link of that name leads to the port. One that is there is replaced;
  // anything else of that name is left alone, and is an error.
  explicit PseudoTerminal(const std::optional<std::filesystem::path>& link);
  PseudoTerminal(const PseudoTerminal&) = delete;
  PseudoTerminal& operator=(const PseudoTerminal&) = delete;
  ~PseudoTerminal();

  [[nodiscard]] const std::string& path() const { return path_; }

  // Readable when bytes have come.
  [[nodiscard]] int descriptor() const { return master_.get(); }

  // What has come; empty when nothing has.
  std::string Read();

  // Bytes that nobody takes off the port are lost.
  void Write(std::string_view bytes);

  // How the port is set, such as "9600 bit/s 8N1".
  [[nodiscard]] std::string Setting() const;

 private:
  void MakeLink(const std::filesystem::path& link);

  FileDescriptor master_;
  FileDescriptor slave_;  // held open, or reading would fail while nobody else has the port open
  std::string path_;
  std::optional<std::filesystem::path> link_;
};

}  // namespace brantel::sim
