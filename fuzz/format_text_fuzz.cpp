// Formats and arguments of any bytes: the text fits its buffer, and with no percent sign in the
// format it is the format.
#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <string>
#include <string_view>

#include "text/format_text.h"

// A NUL ends the format; what is behind it is the first argument, and its length the second.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  const std::string text(data, data + size);
  const std::string_view format = std::string_view(text).substr(0, text.find('\0'));
  const std::string_view argument =
      std::string_view(text).substr(std::min(format.size() + 1, text.size()));

  const std::string alone = brantel::FormatText(format);
  const std::string filled = brantel::FormatText(
      format, {argument, static_cast<std::uint32_t>(argument.size()), std::string_view("%s%n")});
  if (alone.size() >= brantel::kFormatCapacity) std::abort();
  if (filled.size() >= brantel::kFormatCapacity) std::abort();
  const bool plain = format.find('%') == std::string_view::npos;
  if (plain && alone != format.substr(0, brantel::kFormatCapacity - 1)) std::abort();
  if (plain && filled != alone) std::abort();
  return 0;
}
