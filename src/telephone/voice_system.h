#pragma once

#include "system/clock.h"
#include "telephone/memory_blocks.h"
#include "telephone/message_pump.h"
#include "telephone/telephony.h"
#include "telephone/wave_system.h"
#include "text/code_page.h"

namespace brantel {

// The system as a call meets it.
struct VoiceSystem {
  Telephony& telephony;
  RiffFiles& riff_files;
  WaveOutput& wave_output;
  MessagePump& message_pump;
  Clock& clock;
  MemoryBlocks& memory;
  const CodePage& code_page;
};

}  // namespace brantel
