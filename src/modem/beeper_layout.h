#pragma once

#include <cstddef>

#include "framework/instance_layout.h"
#include "framework/web_form_spec.h"

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
extern const WebFormSpec kBeeperWebForm;

}  // namespace brantel
