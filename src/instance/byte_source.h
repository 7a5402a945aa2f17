#pragma once

#include <cstddef>
#include <cstdint>
#include <exception>
#include <span>
#include <string_view>

namespace brantel {

// Bytes that come one after another, such as those of an open file.
class ByteSource {
 public:
  virtual ~ByteSource() = default;

  // Puts the next bytes into the buffer and tells how many: as many as fit if they are at hand, and
  // 0 at the end only. Throws ReadFailure when they cannot be read.
  virtual std::size_t Read(std::span<char> buffer) = 0;
};

struct ReadFailure : std::exception {
  explicit ReadFailure(std::uint32_t code) : error(code) {}

  std::uint32_t error;  // the system's number for the reason
};

// Bytes in memory, which must outlive the object.
class MemorySource final : public ByteSource {
 public:
  explicit MemorySource(std::string_view bytes) : rest_(bytes) {}

  std::size_t Read(std::span<char> buffer) override {
    const std::size_t count = rest_.copy(buffer.data(), buffer.size());
    rest_.remove_prefix(count);
    return count;
  }

 private:
  std::string_view rest_;
};

}  // namespace brantel
