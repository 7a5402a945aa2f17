#pragma once

#include <cstddef>
#include <string_view>

#include "description/class_description.h"

namespace brantel {

// What a Pager instance holds, in file order.
namespace pager_field {
enum : std::size_t {
  kPagerNumber,
  kTerminalPassword,
  kPagerId,
  kMessage,
  kProtocol,
  kSettingsProfile,
  kFieldCount
};
}  // namespace pager_field

// The settings of the machine's port and modem. Their key has a further value, "Settings_Protocol",
// of other programs: deliberately neither read, since the protocol is the instance's, nor written.
namespace pager_setting {
enum : std::size_t {
  kComPort,      // "COM" and the port's number
  kBaud,         // the line's rate in bits per second, or an index (0 to 9) into the usual rates
  kModemString,  // the modem's initialisation command
  k8N1,          // kFramed8N1: 8 data bits, no parity; anything else: 7 data bits, even parity
  kSettingCount
};
}  // namespace pager_setting

inline constexpr std::string_view kFramed8N1 = "1";
inline constexpr std::string_view kFramed7E1 = "0";

extern const ClassDescription kPager;

}  // namespace brantel
