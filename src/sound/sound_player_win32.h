#pragma once

#include "sound/sound_player.h"

namespace brantel {

class SystemSoundPlayer final : public SoundPlayer {
 public:
  bool PlayOnce(const std::string& file) override;
  bool PlayLoop(const std::string& file) override;
  bool Stop() override;
};

}  // namespace brantel
