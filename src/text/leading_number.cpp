#include "text/leading_number.h"

#include <algorithm>
#include <charconv>
#include <limits>

namespace brantel {

std::int32_t LeadingNumber(std::string_view text) {
  text.remove_prefix(std::min(text.find_first_not_of(" \t\n\v\f\r"), text.size()));
  if (text.starts_with('+') && !text.starts_with("+-")) text.remove_prefix(1);
  std::int32_t number = 0;
  const auto parsed = std::from_chars(text.data(), text.data() + text.size(), number);
  if (parsed.ec != std::errc::result_out_of_range) return number;
  return text.front() == '-' ? std::numeric_limits<std::int32_t>::min()
                             : std::numeric_limits<std::int32_t>::max();
}

}  // namespace brantel
