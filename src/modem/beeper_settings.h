#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <span>
#include <string>
#include <vector>

#include "framework/settings_store.h"

namespace brantel {

// The Beeper's settings of the machine's port and modem, in the order in which they are read and
// written.
namespace beeper_setting {
enum : std::size_t {
  kComPort,      // "COM" and the port's number
  kBaud,         // the line's rate in bits per second, or an index (0 to 9) into the usual rates
  kDialString,   // the dial command: the first %s takes the beeper number, the second the message
  kModemString,  // the modem's initialisation command
  kTimeout,      // milliseconds to wait after dialling, beside those for the dial string's commas
};
}  // namespace beeper_setting

inline constexpr std::array<SettingRow, 5> kBeeperSettings = {{
    {"Settings_COMPort", "COM1"},
    {"Settings_Baud", "300"},
    {"Settings_DialString", "ATDT%s,,,,%s#"},
    {"Settings_ModemString", "ATE0Q0V1X4"},
    {"Settings_Timeout", "5"},
}};

// The settings of a profile, with defaults for those that are missing.
std::vector<std::string> ReadBeeperSettings(SettingsStore& store, std::int32_t profile);

// Writes all settings of a profile. False when that fails for any of them.
bool WriteBeeperSettings(SettingsStore& store, std::int32_t profile,
                         std::span<const std::string> settings);

}  // namespace brantel
