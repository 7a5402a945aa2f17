#include "voice/voice_dialog.h"

#include <array>

#include "resources/bitmap_ids.h"
#include "voice/voice_layout.h"

namespace brantel {
namespace {

constexpr int kNameEdit = 223;

// The edit of a wave file and the buttons beside it.
struct WaveRow {
  int edit;
  int browse_button;
  int record_button;
};

constexpr std::array<WaveRow, 5> kWaveRows = {{
    {.edit = 220, .browse_button = 221, .record_button = 235},
    {.edit = 231, .browse_button = 222, .record_button = 236},
    {.edit = 232, .browse_button = 225, .record_button = 237},
    {.edit = 233, .browse_button = 224, .record_button = 238},
    {.edit = 234, .browse_button = 226, .record_button = 239},
}};

constexpr auto kBitmapButtons = [] {
  std::array<BitmapButton, 2 * kWaveRows.size()> buttons{};
  for (std::size_t i = 0; i < kWaveRows.size(); ++i) {
    buttons[2 * i] = {kWaveRows[i].browse_button, BITMAP_BROWSE};
    buttons[2 * i + 1] = {kWaveRows[i].record_button, BITMAP_RECORD};
  }
  return buttons;
}();

constexpr FileKind kWaveFiles = {text_id::kWaveFiles, "*.wav"};

constexpr std::size_t kLongestRecorded = 511;

constexpr InstanceDialogSpec kSpec = {
    .layout = kVoiceLayout,
    .template_id = 140,
    .add_title_id = text_id::kAddVoice,
    .edit_title_id = text_id::kEditVoice,
    .name_control = kNameEdit,
    .name_error_focus = kNameEdit,
    .help_context = 131476,
    .bitmap_buttons = kBitmapButtons,
};

}  // namespace

VoiceDialog::VoiceDialog(DialogView& view, InstanceFiles& files, InstanceDialogCall call,
                         RecorderSystem& recorder_system)
    : InstanceDialog(kSpec, view, files, std::move(call)), recorder_(recorder_system) {}

void VoiceDialog::PressOwnButton(int control) {
  for (const WaveRow& row : kWaveRows) {
    if (control == row.browse_button) BrowseForFile(row.edit, kWaveFiles);
    if (control == row.record_button) recorder_.Record(view(), row.edit, kLongestRecorded);
  }
}

}  // namespace brantel
