#pragma once

#include <string_view>

// The texts that the module logs, by the names that its code calls them.
namespace brantel::host::log_text {

#define STRING(name, id, text) inline constexpr std::string_view name = text;
#include "text/strings.def"
#undef STRING

}  // namespace brantel::host::log_text
