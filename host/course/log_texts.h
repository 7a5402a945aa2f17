#pragma once

#include <string_view>

namespace brantel::host {

// The texts that the module logs, by the names that its code calls them.
namespace log_text {
#define STRING(name, id, text) inline constexpr std::string_view name = text;
#include "text/strings.def"
#undef STRING
}  // namespace log_text

}  // namespace brantel::host
