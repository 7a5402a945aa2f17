#pragma once

#include <cstddef>
#include <optional>
#include <string>
#include <string_view>

namespace brantel::host {

// Puts lines together from what comes in pieces.
class LineAssembler {
 public:
  void Take(std::string_view piece) { bytes_.append(piece); }

  // The next whole line, without its end, if there is one.
  std::optional<std::string> NextLine();

  // Whether there is a line without an end.
  [[nodiscard]] bool has_open_line() const { return !bytes_.empty(); }

 private:
  std::string bytes_;
  std::size_t searched_ = 0;  // bytes in which there is no line end
};

}  // namespace brantel::host
