#pragma once

#include <cstdint>
#include <optional>
#include <string_view>

namespace brantel {

// The number behind the first "COM" of a port setting, 0 when no digit follows and the largest
// number when it is larger. Nothing when the setting has no "COM".
std::optional<std::uint32_t> ComPortNumber(std::string_view setting);

}  // namespace brantel
