#pragma once

#include <algorithm>
#include <array>
#include <cstddef>
#include <span>
#include <string_view>

#include "instance/byte_source.h"

namespace brantel {

// Goes forward through a source that may end anywhere, in few reads, and asks for more only when
// all that is at hand has been taken.
class ByteCursor {
 public:
  // How much is asked for at once: more than an instance of limited texts can hold, so that one of
  // them takes a single read.
  static constexpr std::size_t kReadSize = 8192;

  // `source` must outlive the object.
  // NOLINTNEXTLINE(*-member-init): the source fills the buffer.
  explicit ByteCursor(ByteSource& source) : source_(source) {}
  ByteCursor(const ByteCursor&) = delete;
  ByteCursor& operator=(const ByteCursor&) = delete;

  bool AtEnd() {
    if (rest_.empty()) rest_ = {buffer_.data(), source_.Read(buffer_)};
    return rest_.empty();
  }

  // True once more bytes were wanted than there were.
  [[nodiscard]] bool RanShort() const { return ran_short_; }

  // The next bytes: at most `count`, which is not 0, and none at the end only. The view is good
  // until the next call.
  std::string_view TakePiece(std::size_t count) {
    if (AtEnd()) ran_short_ = true;
    const std::string_view piece = rest_.substr(0, count);
    rest_.remove_prefix(piece.size());
    return piece;
  }

  // Fills the buffer, as far as the bytes reach, and tells how far.
  std::size_t Take(std::span<char> buffer) {
    std::size_t taken = 0;
    while (taken < buffer.size()) {
      const std::string_view piece = TakePiece(buffer.size() - taken);
      if (piece.empty()) break;
      std::ranges::copy(piece, buffer.subspan(taken).begin());
      taken += piece.size();
    }
    return taken;
  }

 private:
  ByteSource& source_;
  std::array<char, kReadSize> buffer_;
  std::string_view rest_;
  bool ran_short_ = false;
};

}  // namespace brantel
