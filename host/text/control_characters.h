#pragma once

#include <string>
#include <string_view>

namespace brantel::host {

// The text (UTF-8) with each of its control characters, line ends too, shown by its number, such as
// <1B>: what modems and relays have sent, and what files hold, must not steer the terminal.
std::string ShowControlCharacters(std::string_view text);

// The text with a blank in the place of each.
std::string BlankControlCharacters(std::string_view text);

}  // namespace brantel::host
