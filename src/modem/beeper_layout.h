#pragma once

#include <cstddef>

#include "framework/instance_layout.h"

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
};
}  // namespace beeper_field

extern const InstanceLayout kBeeperLayout;

}  // namespace brantel
