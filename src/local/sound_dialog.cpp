#include "local/sound_dialog.h"

#include <array>

#include "local/sound_layout.h"
#include "resources/bitmap_ids.h"

namespace brantel {
namespace {

constexpr int kBrowseButton = 210;
constexpr int kRecordButton = 211;
constexpr int kFilenameEdit = 212;

constexpr FileKind kWaveFiles = {text_id::kWaveFiles, "*.wav"};

constexpr std::size_t kLongestRecorded = 512;

constexpr std::array<BitmapButton, 2> kBitmapButtons = {{
    {kBrowseButton, BITMAP_BROWSE},
    {kRecordButton, BITMAP_RECORD},
}};

constexpr InstanceDialogSpec kSpec = {
    .layout = kSoundLayout,
    .template_id = 206,
    .add_title_id = text_id::kAddSound,
    .edit_title_id = text_id::kEditSound,
    .name_control = 203,
    .name_error_focus = 203,
    .help_context = 131195,
    .bitmap_buttons = kBitmapButtons,
};

}  // namespace

SoundDialog::SoundDialog(DialogView& view, InstanceFiles& files, InstanceDialogCall call,
                         RecorderSystem& recorder_system)
    : InstanceDialog(kSpec, view, files, std::move(call)), recorder_(recorder_system) {}

void SoundDialog::PressOwnButton(int control) {
  if (control == kBrowseButton) {
    BrowseForFile(kFilenameEdit, kWaveFiles);
  } else if (control == kRecordButton) {
    recorder_.Record(view(), kFilenameEdit, kLongestRecorded);
  }
}

}  // namespace brantel
