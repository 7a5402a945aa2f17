#pragma once

#include <span>
#include <string_view>

#include "description/class_description.h"

namespace brantel {

// The descriptions of all notifier classes, in their order. Without Windows, so that tools and
// tests read instance files by the same tables as the module.
std::span<const ClassDescription* const> ClassDescriptions();

// The class with this name, or null. Names are told apart by letter case.
const ClassDescription* FindClassDescription(std::string_view class_name);

// The class whose magic a file that begins with these bytes has, or null.
const ClassDescription* FindClassOfFile(std::string_view beginning);

}  // namespace brantel
