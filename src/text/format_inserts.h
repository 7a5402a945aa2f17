#pragma once

#include <initializer_list>
#include <string>
#include <string_view>

#include "text/format_text.h"

namespace brantel {

// Fills arguments into a text in the manner of the system's message tables: "%2!u!" is the second
// argument as FormatText's "%u" has it, "%1!s!" the first argument whole, and "%%" a percent sign.
// Nothing stands for an argument that is not there; a percent sign that begins none of these stands
// for itself.
std::string FormatInserts(std::string_view text, std::initializer_list<FormatArgument> arguments);

}  // namespace brantel
