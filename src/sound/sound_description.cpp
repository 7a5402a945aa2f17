#include "sound/sound_description.h"

#include <array>

#include "description/bitmap_ids.h"
#include "sound/sound_ids.h"
#include "text/string_table.h"

namespace brantel {
namespace {

constexpr auto kFields = FieldsInFileOrder<sound_field::kFieldCount>({
    {.index = sound_field::kWaveFilename,
     .name = "wave filename",
     .control = {ControlKind::kEdit, SOUND_FILENAME, text_id::kFilenameMissing}},
    {.index = sound_field::kContinuousPlay,
     .name = "continuous play",
     .kind = FieldKind::kInteger,
     .control = {ControlKind::kCheckBox, SOUND_CONTINUOUS_PLAY}},
});

constexpr std::array<BitmapButton, 2> kBitmapButtons = {{
    {SOUND_BROWSE, BITMAP_BROWSE},
    {SOUND_RECORD, BITMAP_RECORD},
}};

}  // namespace

constinit const ClassDescription kSound = {
    .clsid = ParseGuid(SOUND_CLSID),
    .registry_script_id = SOUND_REGISTRY_SCRIPT,
    .icon_id = SOUND_ICON,
    .instances = {.class_name = "Sound",
                  .magic = ParseGuid("5D6A4051-7608-5DD6-F1D3-2CFEA0F80A9F"),
                  .fields = kFields,
                  .default_name_id = text_id::kDefaultSound},
    .dialog = {.template_id = SOUND_DIALOG,
               .add_title_id = text_id::kAddSound,
               .edit_title_id = text_id::kEditSound,
               .name_control = SOUND_NAME,
               .name_error_focus = SOUND_NAME,
               .help_context = 131195,
               .bitmap_buttons = kBitmapButtons},
};

}  // namespace brantel
