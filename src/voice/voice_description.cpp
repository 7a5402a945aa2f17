#include "voice/voice_description.h"

#include <array>

#include "description/bitmap_ids.h"
#include "text/string_table.h"
#include "voice/voice_ids.h"

namespace brantel {
namespace {

constexpr auto kFields = FieldsInFileOrder<voice_field::kFieldCount>({
    {.index = voice_field::kPhoneNumber,
     .name = "phone number",
     .control = {ControlKind::kEdit, VOICE_PHONE_NUMBER, text_id::kPhoneMissing}},
    {.index = voice_field::kRepeatMessage,
     .name = "repeat message",
     .control = {ControlKind::kEdit, VOICE_REPEAT_MESSAGE}},
    {.index = voice_field::kCount,
     .name = "count",
     .kind = FieldKind::kInteger,
     .control = {ControlKind::kEdit, VOICE_COUNT}},
    {.index = voice_field::kButton,
     .name = "button",
     .kind = FieldKind::kInteger,
     .control = {ControlKind::kEdit, VOICE_BUTTON}},
    {.index = voice_field::kItemDown,
     .name = "item down",
     .control = {ControlKind::kEdit, VOICE_ITEM_DOWN}},
    {.index = voice_field::kItemUp,
     .name = "item up",
     .control = {ControlKind::kEdit, VOICE_ITEM_UP}},
    {.index = voice_field::kServiceDown,
     .name = "service down",
     .control = {ControlKind::kEdit, VOICE_SERVICE_DOWN}},
    {.index = voice_field::kServiceUp,
     .name = "service up",
     .control = {ControlKind::kEdit, VOICE_SERVICE_UP}},
});

constexpr std::array<BitmapButton, 10> kBitmapButtons = {{
    {VOICE_BROWSE_REPEAT_MESSAGE, BITMAP_BROWSE},
    {VOICE_RECORD_REPEAT_MESSAGE, BITMAP_RECORD},
    {VOICE_BROWSE_ITEM_DOWN, BITMAP_BROWSE},
    {VOICE_RECORD_ITEM_DOWN, BITMAP_RECORD},
    {VOICE_BROWSE_ITEM_UP, BITMAP_BROWSE},
    {VOICE_RECORD_ITEM_UP, BITMAP_RECORD},
    {VOICE_BROWSE_SERVICE_DOWN, BITMAP_BROWSE},
    {VOICE_RECORD_SERVICE_DOWN, BITMAP_RECORD},
    {VOICE_BROWSE_SERVICE_UP, BITMAP_BROWSE},
    {VOICE_RECORD_SERVICE_UP, BITMAP_RECORD},
}};

}  // namespace

constinit const ClassDescription kVoice = {
    .clsid = ParseGuid(VOICE_CLSID),
    .registry_script_id = VOICE_REGISTRY_SCRIPT,
    .icon_id = VOICE_ICON,
    .instances = {.class_name = "Voice",
                  .magic = ParseGuid("C4F822F8-1890-08CD-6842-1838A3A78A26"),
                  .fields = kFields,
                  .default_name_id = text_id::kDefaultVoice},
    .dialog = {.template_id = VOICE_DIALOG,
               .add_title_id = text_id::kAddVoice,
               .edit_title_id = text_id::kEditVoice,
               .name_control = VOICE_NAME,
               .name_error_focus = VOICE_NAME,
               .help_context = 131476,
               .bitmap_buttons = kBitmapButtons},
};

}  // namespace brantel
