#pragma once

#include <cstddef>

#include "description/class_description.h"

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
  kFieldCount
};
}  // namespace voice_field

extern const ClassDescription kVoice;

}  // namespace brantel
