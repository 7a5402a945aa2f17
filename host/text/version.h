#pragma once

#include <string_view>

namespace brantel::host {

// The release's version, such as "1.0.0".
std::string_view ProgramVersion();

}  // namespace brantel::host
