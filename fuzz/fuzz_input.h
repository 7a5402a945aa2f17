#pragma once

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <string_view>

namespace brantel {

// Hands out parts of a fuzzer's input.
class FuzzInput {
 public:
  explicit FuzzInput(std::string_view bytes) : rest_(bytes) {}

  // 0 behind the end.
  std::uint8_t Byte() {
    if (rest_.empty()) return 0;
    const auto byte = static_cast<std::uint8_t>(rest_.front());
    rest_.remove_prefix(1);
    return byte;
  }

  // Whether this byte comes next, which is then taken.
  bool NextIs(std::uint8_t byte) {
    if (rest_.empty() || static_cast<std::uint8_t>(rest_.front()) != byte) return false;
    rest_.remove_prefix(1);
    return true;
  }

  // Up to the next vertical tab.
  std::string_view Field() {
    const std::string_view field = rest_.substr(0, rest_.find('\v'));
    rest_.remove_prefix(std::min(rest_.size(), field.size() + 1));
    return field;
  }

  std::string_view Take(std::size_t count) {
    const std::string_view taken = rest_.substr(0, count);
    rest_.remove_prefix(taken.size());
    return taken;
  }

  [[nodiscard]] bool AtEnd() const { return rest_.empty(); }

 private:
  std::string_view rest_;
};

// Ends the fuzz target as one that has found something.
inline void Require(bool condition) {
  if (!condition) std::abort();
}

}  // namespace brantel
