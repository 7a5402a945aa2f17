#pragma once

#include <string_view>

namespace brantel {

// As much of a text as counts where texts end at their first NUL: in files, forms and the registry,
// and for the system. A host, too, may put a NUL into a text that it expands.
constexpr std::string_view UpToNul(std::string_view text) {
  return text.substr(0, text.find('\0'));
}

}  // namespace brantel
