#pragma once

#include <span>
#include <string_view>

#include "framework/instance_layout.h"

namespace brantel {

// The instance layouts of the seven classes, in the order of the class table. Without Windows, so
// that tools and tests read instance files by the same tables as the module.
std::span<const InstanceLayout* const> ClassLayouts();

// The layout of the class with this name, or null. Names are told apart by letter case.
const InstanceLayout* FindClassLayout(std::string_view class_name);

// The layout whose magic this file begins with, or null.
const InstanceLayout* FindLayoutOfFile(std::string_view file);

}  // namespace brantel
