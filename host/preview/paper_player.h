#pragma once

#include <string>

#include "host/preview/paper_clock.h"
#include "host/preview/preview_part.h"
#include "sound/sound_player.h"
#include "telephone/wave_system.h"

namespace brantel::host {

// Plays every sound for as long as it takes, and nothing is heard.
class PaperPlayer final : public SoundPlayer {
 public:
  // All must outlive the object.
  PaperPlayer(RiffFiles& waves, PaperClock& clock, PreviewParts& parts)
      : waves_(waves), clock_(clock), parts_(parts) {}

  bool PlayOnce(const std::string& file) override;
  bool PlayLoop(const std::string& file) override;
  bool Stop() override { return true; }

 private:
  RiffFiles& waves_;
  PaperClock& clock_;
  PreviewParts& parts_;
};

}  // namespace brantel::host
