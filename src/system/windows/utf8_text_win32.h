#pragma once

#include <string>
#include <string_view>

namespace brantel {

// Conversions between UTF-16 and UTF-8, for text that never leaves the module in the ANSI code
// page.
std::string ToUtf8(std::wstring_view text);
std::wstring FromUtf8(std::string_view text);

}  // namespace brantel
