#pragma once

#include <cstdint>
#include <string>

#include "telephone/line_constants.h"
#include "telephone/voice_state.h"
#include "telephone/voice_system.h"

namespace brantel {

// What PlaceVoiceCall answers when nobody has pressed the key.
inline constexpr LineCode kNotAcknowledged = 0x10000000;

// Whom to call and what to play.
struct VoiceCall {
  std::string number;
  std::string repeat_message;
  std::string first_message;   // empty: none
  std::string second_message;  // empty: none
  std::int32_t count = 0;      // repetitions beside the first; a negative count plays none at all
  std::int32_t button = 0;     // as LineSession has it
};

// Calls, plays the repeat message until the key is pressed, then the two messages. 0 when all of
// that happened, kPlaybackFailed, kNotAcknowledged, or the error of a step of the session.
LineCode PlaceVoiceCall(const VoiceSystem& system, VoiceState& state, const VoiceCall& call);

}  // namespace brantel
