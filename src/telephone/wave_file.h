#pragma once

#include <string>

#include "system/outcome.h"
#include "telephone/memory_blocks.h"
#include "telephone/wave_system.h"

namespace brantel {

// What a wave file holds.
struct Wave {
  // The "fmt " chunk and zeros behind it.
  MemoryBlock format;
  MemoryBlock samples;
};

// Reads a RIFF/WAVE file whole. The reason of a failure is the number of the text that says it.
Outcome<Wave> ReadWaveFile(RiffFiles& files, MemoryBlocks& memory, const std::string& path);

}  // namespace brantel
