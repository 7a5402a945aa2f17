#include "voice/voice_layout.h"

#include <array>

#include "framework/string_table.h"

namespace brantel {
namespace {

constexpr std::array<InstanceField, 8> kFields = {{
    {.name = "phone number", .control = {ControlKind::kEdit, 219, text_id::kPhoneMissing}},
    {.name = "repeat message", .control = {ControlKind::kEdit, 220}},
    {.name = "count", .kind = FieldKind::kInteger, .control = {ControlKind::kEdit, 229}},
    {.name = "button", .kind = FieldKind::kInteger, .control = {ControlKind::kEdit, 230}},
    {.name = "item down", .control = {ControlKind::kEdit, 231}},
    {.name = "item up", .control = {ControlKind::kEdit, 232}},
    {.name = "service down", .control = {ControlKind::kEdit, 233}},
    {.name = "service up", .control = {ControlKind::kEdit, 234}},
}};

}  // namespace

constinit const InstanceLayout kVoiceLayout = {
    .class_name = "Voice",
    .magic = ParseGuid("C4F822F8-1890-08CD-6842-1838A3A78A26"),
    .fields = kFields,
    .default_name_id = text_id::kDefaultVoice,
};

}  // namespace brantel
