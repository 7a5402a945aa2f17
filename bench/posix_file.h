#pragma once

#include <fcntl.h>
#include <unistd.h>

#include <array>
#include <cstddef>
#include <optional>
#include <string>

namespace brantel {

// Larger than any file of the limited reader, so that such a file takes a single read, as on
// Windows.
inline constexpr std::size_t kReadSize = 16384;

// The whole content of a file by one open, one read and one close: what the module's own file
// access does on Windows.
inline std::optional<std::string> ReadPosixFile(const char* path) {
  const int file = open(path, O_RDONLY | O_CLOEXEC);
  if (file < 0) return std::nullopt;
  std::string content;
  std::array<char, kReadSize> buffer;  // NOLINT(*-member-init): filled by read
  ssize_t count = 0;
  do {
    count = read(file, buffer.data(), buffer.size());
    if (count > 0) content.append(buffer.data(), static_cast<std::size_t>(count));
  } while (count == static_cast<ssize_t>(buffer.size()));
  close(file);
  return content;
}

}  // namespace brantel
