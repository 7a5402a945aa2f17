#include "voice/voice_dialog.h"

#include <array>

#include "voice/voice_description.h"
#include "voice/voice_ids.h"

namespace brantel {
namespace {

// The edit of a wave file and the buttons beside it.
struct WaveRow {
  int edit;
  int browse_button;
  int record_button;
};

constexpr std::array<WaveRow, 5> kWaveRows = {{
    {.edit = VOICE_REPEAT_MESSAGE,
     .browse_button = VOICE_BROWSE_REPEAT_MESSAGE,
     .record_button = VOICE_RECORD_REPEAT_MESSAGE},
    {.edit = VOICE_ITEM_DOWN,
     .browse_button = VOICE_BROWSE_ITEM_DOWN,
     .record_button = VOICE_RECORD_ITEM_DOWN},
    {.edit = VOICE_ITEM_UP,
     .browse_button = VOICE_BROWSE_ITEM_UP,
     .record_button = VOICE_RECORD_ITEM_UP},
    {.edit = VOICE_SERVICE_DOWN,
     .browse_button = VOICE_BROWSE_SERVICE_DOWN,
     .record_button = VOICE_RECORD_SERVICE_DOWN},
    {.edit = VOICE_SERVICE_UP,
     .browse_button = VOICE_BROWSE_SERVICE_UP,
     .record_button = VOICE_RECORD_SERVICE_UP},
}};

constexpr FileKind kWaveFiles = {text_id::kWaveFiles, "*.wav"};

constexpr std::size_t kLongestRecorded = 511;

}  // namespace

VoiceDialog::VoiceDialog(DialogView& view, InstanceFiles& files, InstanceDialogCall call,
                         RecorderSystem& recorder_system)
    : InstanceDialog(kVoice, view, files, std::move(call)), recorder_(recorder_system) {}

void VoiceDialog::PressOwnButton(int control) {
  for (const WaveRow& row : kWaveRows) {
    if (control == row.browse_button) BrowseForFile(row.edit, kWaveFiles);
    if (control == row.record_button) recorder_.Record(view(), row.edit, kLongestRecorded);
  }
}

}  // namespace brantel
