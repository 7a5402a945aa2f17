#include "host/text/line_assembler.h"

namespace brantel::host {

std::optional<std::string> LineAssembler::NextLine() {
  const std::size_t end = bytes_.find('\n', searched_);
  if (end == std::string::npos) {
    searched_ = bytes_.size();
    return std::nullopt;
  }
  std::string line = bytes_.substr(0, end);
  bytes_.erase(0, end + 1);
  searched_ = 0;
  return line;
}

}  // namespace brantel::host
