#pragma once

#include <cstddef>
#include <string_view>

namespace brantel::host {

// How much of a program file ProgramBits needs of what linkers make.
inline constexpr std::size_t kProgramStart = 4096;

// Whether a file that begins with these bytes is a program for 32-bit (x86) or 64-bit (x64)
// Windows: 32, 64, or 0 when it is neither.
int ProgramBits(std::string_view start);

}  // namespace brantel::host
