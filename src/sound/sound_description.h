#pragma once

#include <cstddef>

#include "description/class_description.h"

namespace brantel {

// What a Sound instance holds, in file order.
namespace sound_field {
enum : std::size_t { kWaveFilename, kContinuousPlay, kFieldCount };
}  // namespace sound_field

extern const ClassDescription kSound;

}  // namespace brantel
