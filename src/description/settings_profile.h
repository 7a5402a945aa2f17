#pragma once

#include <cstdint>

namespace brantel {

// Device settings are kept in numbered profiles; an instance says which one it uses.
inline constexpr std::int32_t kFirstSettingsProfile = 0;
inline constexpr std::int32_t kLastSettingsProfile = 10;

}  // namespace brantel
