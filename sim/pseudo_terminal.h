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

// What comes from who has a port open.
struct PortInput {
  std::string bytes;
  // Whether the last program that had the port open has closed it, behind all its bytes.
  bool closed = false;
};

// A pseudo-terminal that others open as a serial port. It is there until the object is destroyed,
// whether or not somebody has it open. Like a real port it takes the same settings again and again,
// and keeps no bytes while nobody has it open. Throws std::system_error when the system has none,
// or when the link cannot be made.
class PseudoTerminal {
 public:
  // With a `link`, a symbolic link of that name leads to the port. One that is there is replaced;
  // anything else of that name is left alone, and is an error.
  explicit PseudoTerminal(const std::optional<std::filesystem::path>& link);
  PseudoTerminal(const PseudoTerminal&) = delete;
  PseudoTerminal& operator=(const PseudoTerminal&) = delete;
  ~PseudoTerminal();

  [[nodiscard]] const std::string& path() const { return path_; }

  // Readable when there is something to Read. It is another one after each Read.
  [[nodiscard]] int descriptor() const { return closed_ ? openings_.get() : master_.get(); }

  // Does not wait; what it answers is empty when nothing has come.
  PortInput Read();

  // Bytes that nobody takes off the port before it is closed are lost.
  void Write(std::string_view bytes);

  // How the port is set, such as "9600 bit/s 8N1".
  [[nodiscard]] std::string Setting() const;

 private:
  void MakeLink(const std::filesystem::path& link);
  void MakeRaw();
  void ForgetParityCheck();
  void DiscardUnread();
  PortInput NoteClosed();

  FileDescriptor master_;
  FileDescriptor openings_;  // tells when the port is opened
  std::string path_;
  std::optional<std::filesystem::path> link_;
  bool closed_ = false;
};

}  // namespace brantel::sim
