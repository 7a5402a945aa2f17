#pragma once

#include "framework/clock.h"
#include "voice/memory_blocks.h"
#include "voice/message_pump.h"
#include "voice/telephony.h"
#include "voice/wave_system.h"

namespace brantel {

// The system as a call meets it.
struct VoiceSurroundings {
  Telephony& telephony;
  RiffFiles& riff_files;
  WaveOutput& wave_output;
  MessagePump& message_pump;
  Clock& clock;
  MemoryBlocks& memory;
};

}  // namespace brantel
