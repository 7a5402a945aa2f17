#pragma once

#include <cstddef>

#include "framework/instance_layout.h"

namespace brantel {

// What a Sound instance holds, in file order.
namespace sound_field {
enum : std::size_t { kWaveFilename, kContinuousPlay };
}  // namespace sound_field

extern const InstanceLayout kSoundLayout;

}  // namespace brantel
