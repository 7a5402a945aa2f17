#pragma once

#include <optional>
#include <string>

#include "telephone/memory_blocks.h"
#include "telephone/wave_system.h"

namespace brantel {

// What a wave file holds.
struct Wave {
  // The "fmt " chunk and zeros behind it.
  MemoryBlock format;
  MemoryBlock samples;
};

// Reads a RIFF/WAVE file whole. Nothing when that succeeded, else the number of the text that says
// what failed.
std::optional<unsigned> ReadWaveFile(RiffFiles& files, MemoryBlocks& memory,
                                     const std::string& path, Wave& wave);

}  // namespace brantel
