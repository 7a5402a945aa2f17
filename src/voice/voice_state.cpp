#include "voice/voice_state.h"

#include "framework/string_table.h"

namespace brantel {

void VoiceState::Log(std::string_view text) const {
  // Held meanwhile: a host may end the binding from within.
  const std::shared_ptr<NotifierHost> told = host;
  if (told) told->LogMessage(text);
}

void VoiceState::LogText(unsigned text_id) const {
  Log(LoadText(text_id));
}

}  // namespace brantel
