#pragma once

#include <cstddef>

#include "framework/instance_layout.h"

namespace brantel {

// What a Voice instance holds, in file order.
namespace voice_field {
enum : std::size_t {
  kPhoneNumber,
  kRepeatMessage,
  kCount,
  kButton,
  kItemDown,
  kItemUp,
  kServiceDown,
  kServiceUp,
};
}  // namespace voice_field

extern const InstanceLayout kVoiceLayout;

}  // namespace brantel
