#include "local/launch_program_layout.h"

#include <array>

#include "framework/string_table.h"

namespace brantel {
namespace {

constexpr std::array<InstanceField, 3> kFields = {{
    {.name = "program filename", .control = {ControlKind::kEdit, 219, text_id::kFilenameMissing}},
    {.name = "working path", .control = {ControlKind::kEdit, 222, text_id::kWorkingPathMissing}},
    {.name = "program arguments", .control = {ControlKind::kEdit, 220}},
}};

}  // namespace

constinit const InstanceLayout kLaunchProgramLayout = {
    .class_name = "LaunchProgram",
    .magic = ParseGuid("ECEC7E6C-8E18-4CA2-C56F-5334C2BD7945"),
    .fields = kFields,
    .default_name_id = text_id::kDefaultLaunchProgram,
};

}  // namespace brantel
