// Makes the class of its parts and of the system's things.
#include <memory>
#include <utility>

#include "dialog/sound_recorder_win32.h"
#include "instance/instance_files_win32.h"
#include "sound/sound.h"
#include "sound/sound_dialog.h"
#include "sound/sound_player_win32.h"

namespace brantel {
namespace {

constinit SystemSoundPlayer sound_player;

}  // namespace

std::unique_ptr<Notifier> MakeSound() {
  return std::make_unique<Sound>(disk_instance_files, sound_player);
}

std::unique_ptr<InstanceDialog> MakeSoundDialog(DialogView& view, InstanceDialogCall call) {
  return std::make_unique<SoundDialog>(view, disk_instance_files, std::move(call), system_recorder);
}

}  // namespace brantel
