#pragma once

#include <cstdint>
#include <optional>
#include <string_view>

namespace brantel::host {

// The line of the first character of a TOML text that is not ASCII and stands neither in a string
// nor in a comment, where TOML allows none, if there is one. The library that parses TOML must not
// meet it: for some of them it goes where its compiler was told that nothing goes. Of a text that
// is no TOML, what stands behind its first fault does not matter.
std::optional<std::uint32_t> LineOfForeignCharacter(std::string_view toml);

}  // namespace brantel::host
