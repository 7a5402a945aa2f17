#pragma once

#include <optional>
#include <string>
#include <string_view>

namespace brantel::host {

// Conversions between the system's ANSI code page, which instance files and their paths are in, and
// UTF-8, in which this host works.
std::string FromCodePage(std::string_view text);

// Nothing when the code page does not hold each of the characters.
std::optional<std::string> ToCodePage(std::string_view text);

}  // namespace brantel::host
