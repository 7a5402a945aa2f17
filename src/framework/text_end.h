#pragma once

#include <string_view>

namespace brantel {

// What the system takes of a text that is handed to it with a NUL behind it. A host may put a NUL
// into a text that it expands.
constexpr std::string_view UpToNul(std::string_view text) {
  return text.substr(0, text.find('\0'));
}

}  // namespace brantel
