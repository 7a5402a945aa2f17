#pragma once

#include <cstddef>

#include "framework/instance_layout.h"

namespace brantel {

// What a LaunchProgram instance holds, in file order.
namespace launch_program_field {
enum : std::size_t { kProgramFilename, kWorkingPath, kProgramArguments };
}  // namespace launch_program_field

extern const InstanceLayout kLaunchProgramLayout;

}  // namespace brantel
