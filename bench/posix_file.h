#pragma once

#include <fcntl.h>
#include <unistd.h>

#include <cerrno>
#include <cstddef>
#include <cstdint>
#include <span>

#include "instance/byte_source.h"

namespace brantel {

// A file that is read as the module's own file access reads on Windows: one open, one read for each
// request, one close.
class PosixFile final : public ByteSource {
 public:
  explicit PosixFile(const char* path) : file_(open(path, O_RDONLY | O_CLOEXEC)) {}
  PosixFile(const PosixFile&) = delete;
  PosixFile& operator=(const PosixFile&) = delete;
  ~PosixFile() override { close(file_); }

  std::size_t Read(std::span<char> buffer) override {
    const ssize_t count = read(file_, buffer.data(), buffer.size());
    if (count < 0) throw ReadFailure(static_cast<std::uint32_t>(errno));
    return static_cast<std::size_t>(count);
  }

 private:
  const int file_;
};

}  // namespace brantel
