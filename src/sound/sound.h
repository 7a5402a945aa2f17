#pragma once

#include "instance/instance_files.h"
#include "notifier/notifier.h"
#include "sound/sound_player.h"

namespace brantel {

// Send's result for a sound that goes on after it, a success.
inline constexpr Result kSoundGoesOn = 2;

// Plays a wave file, once or over and over.
class Sound final : public Notifier {
 public:
  // Both must outlive the object.
  Sound(InstanceFiles& files, SoundPlayer& player) : files_(files), player_(player) {}

  // S_OK when the sound has been played, kSoundGoesOn when it loops until the next sound. E_FAIL
  // for an instance that cannot be loaded and a sound that cannot be played. An empty argument
  // stops what this process is playing. Needs no host.
  Result Send(const InstanceArgument& argument, NotifierHost* host) override;

 private:
  InstanceFiles& files_;
  SoundPlayer& player_;
};

}  // namespace brantel
