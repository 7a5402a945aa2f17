#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "framework/settings_store.h"

namespace brantel {

// The Pager's settings of the machine's port and modem, in the order in which they are read and
// written.
namespace pager_setting {
enum : std::size_t {
  kComPort,      // "COM" and the port's number
  kBaud,         // the line's rate in bits per second, or an index (0 to 9) into the usual rates
  kModemString,  // the modem's initialisation command
  k8N1,          // kFramed8N1: 8 data bits, no parity; anything else: 7 data bits, even parity
};
}  // namespace pager_setting

inline constexpr std::array<SettingRow, 4> kPagerSettings = {{
    {"Settings_COMPort", "COM1"},
    {"Settings_Baud", "300"},
    {"Settings_ModemString", "ATE0Q0V1X4"},
    {"Settings_8N1", "0"},
}};

inline constexpr std::string_view kFramed8N1 = "1";
inline constexpr std::string_view kFramed7E1 = "0";

// The settings of a profile, with defaults for those that are missing. The key has a further value,
// "Settings_Protocol", of other programs: deliberately neither read, since the protocol is the
// instance's, nor written.
std::vector<std::string> ReadPagerSettings(SettingsStore& store, std::int32_t profile);

// Writes all settings of a profile. False when that fails for any of them.
bool WritePagerSettings(SettingsStore& store, std::int32_t profile,
                        std::span<const std::string> settings);

}  // namespace brantel
