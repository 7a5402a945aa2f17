#include "sound/sound.h"

#include "notifier/instance_loading.h"
#include "sound/sound_description.h"

namespace brantel {

Result Sound::Send(const InstanceArgument& argument, NotifierHost* host) {
  using namespace sound_field;
  if (argument.path.empty()) return player_.Stop() ? kOk : kFail;

  const auto instance = LoadInstanceForAlert(files_, kSound.instances, argument, host);
  if (!instance) return kFail;

  const std::string& file = instance->text(kWaveFilename);
  if (instance->integer(kContinuousPlay) != 0) return player_.PlayLoop(file) ? kSoundGoesOn : kFail;
  return player_.PlayOnce(file) ? kOk : kFail;
}

}  // namespace brantel
