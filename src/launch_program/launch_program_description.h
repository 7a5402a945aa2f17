#pragma once

#include <cstddef>

#include "description/class_description.h"

namespace brantel {

// What a LaunchProgram instance holds, in file order.
namespace launch_program_field {
enum : std::size_t { kProgramFilename, kWorkingPath, kProgramArguments, kFieldCount };
}  // namespace launch_program_field

extern const ClassDescription kLaunchProgram;

}  // namespace brantel
