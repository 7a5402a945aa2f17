#pragma once

#include <cstdint>
#include <string_view>

namespace brantel {

// The decimal number at the start of a text, behind white space of any kind and with a sign or
// without: 0 when the text begins otherwise; of a number that is too large or too small, the
// nearest there is.
std::int32_t LeadingNumber(std::string_view text);

}  // namespace brantel
