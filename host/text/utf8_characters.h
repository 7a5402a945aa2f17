#pragma once

#include <cstddef>
#include <string_view>

namespace brantel::host {

// How many characters a UTF-8 text has.
std::size_t CountCharacters(std::string_view text);

// The text up to that many characters.
std::string_view FirstCharacters(std::string_view text, std::size_t count);

}  // namespace brantel::host
