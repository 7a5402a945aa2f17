#include "local/sound_layout.h"

#include <array>

#include "framework/string_table.h"

namespace brantel {
namespace {

constexpr std::array<InstanceField, 2> kFields = {{
    {.name = "wave filename", .control = {ControlKind::kEdit, 212, text_id::kFilenameMissing}},
    {.name = "continuous play",
     .kind = FieldKind::kInteger,
     .control = {ControlKind::kCheckBox, 213}},
}};

}  // namespace

constinit const InstanceLayout kSoundLayout = {
    .class_name = "Sound",
    .magic = ParseGuid("5D6A4051-7608-5DD6-F1D3-2CFEA0F80A9F"),
    .fields = kFields,
    .default_name_id = text_id::kDefaultSound,
};

}  // namespace brantel
