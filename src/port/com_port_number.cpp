#include "port/com_port_number.h"

#include <charconv>
#include <limits>

namespace brantel {

std::optional<std::uint32_t> ComPortNumber(std::string_view setting) {
  constexpr std::string_view kPrefix = "COM";
  const std::size_t start = setting.find(kPrefix);
  if (start == std::string_view::npos) return std::nullopt;
  setting.remove_prefix(start + kPrefix.size());
  std::uint32_t number = 0;
  const auto parsed = std::from_chars(setting.data(), setting.data() + setting.size(), number);
  return parsed.ec == std::errc::result_out_of_range ? std::numeric_limits<std::uint32_t>::max()
                                                     : number;
}

}  // namespace brantel
