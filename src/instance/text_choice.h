#pragma once

#include <cstddef>
#include <string_view>

#include "description/instance_layout.h"

namespace brantel {

// The position among the choices of the one that is exactly this text; 0 for every other text,
// since the first choice stands for them.
std::size_t ChosenPosition(const TextRange& choices, std::string_view text);

}  // namespace brantel
