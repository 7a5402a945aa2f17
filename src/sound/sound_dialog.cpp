#include "sound/sound_dialog.h"

#include <array>

#include "sound/sound_description.h"
#include "sound/sound_ids.h"

namespace brantel {
namespace {

constexpr FileKind kWaveFiles = {text_id::kWaveFiles, "*.wav"};

constexpr std::size_t kLongestRecorded = 512;

}  // namespace

SoundDialog::SoundDialog(DialogView& view, InstanceFiles& files, InstanceDialogCall call,
                         RecorderSystem& recorder_system)
    : InstanceDialog(kSound, view, files, std::move(call)), recorder_(recorder_system) {}

void SoundDialog::PressOwnButton(int control) {
  if (control == SOUND_BROWSE) {
    BrowseForFile(SOUND_FILENAME, kWaveFiles);
  } else if (control == SOUND_RECORD) {
    recorder_.Record(view(), SOUND_FILENAME, kLongestRecorded);
  }
}

}  // namespace brantel
