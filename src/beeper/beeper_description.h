#pragma once

#include <cstddef>

#include "description/class_description.h"

namespace brantel {

// What a Beeper instance holds, in file order.
namespace beeper_field {
enum : std::size_t {
  kBeeperNumber,
  kDialingOptions,
  kUpCode,
  kDownCode,
  kTrapCode,
  kReportMessage,
  kSettingsProfile,
  kFieldCount
};
}  // namespace beeper_field

// The settings of the machine's port and modem.
namespace beeper_setting {
enum : std::size_t {
  kComPort,      // "COM" and the port's number
  kBaud,         // the line's rate in bits per second, or an index (0 to 9) into the usual rates
  kDialString,   // the dial command: the first %s takes the beeper number, the second the message
  kModemString,  // the modem's initialisation command
  kTimeout,      // milliseconds to wait after dialling, beside those for the dial string's commas
  kSettingCount
};
}  // namespace beeper_setting

extern const ClassDescription kBeeper;

}  // namespace brantel
