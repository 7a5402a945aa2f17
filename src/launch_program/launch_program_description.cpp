#include "launch_program/launch_program_description.h"

#include <array>

#include "description/bitmap_ids.h"
#include "launch_program/launch_program_ids.h"
#include "text/string_table.h"

namespace brantel {
namespace {

constexpr auto kFields = FieldsInFileOrder<launch_program_field::kFieldCount>({
    {.index = launch_program_field::kProgramFilename,
     .name = "program filename",
     .control = {ControlKind::kEdit, LAUNCH_PROGRAM_FILENAME, text_id::kFilenameMissing}},
    {.index = launch_program_field::kWorkingPath,
     .name = "working path",
     .control = {ControlKind::kEdit, LAUNCH_PROGRAM_WORKING_PATH, text_id::kWorkingPathMissing}},
    {.index = launch_program_field::kProgramArguments,
     .name = "program arguments",
     .control = {ControlKind::kEdit, LAUNCH_PROGRAM_ARGUMENTS}},
});

constexpr std::array<BitmapButton, 2> kBitmapButtons = {{
    {LAUNCH_PROGRAM_BROWSE_FILENAME, BITMAP_BROWSE},
    {LAUNCH_PROGRAM_BROWSE_WORKING_PATH, BITMAP_BROWSE},
}};

}  // namespace

constinit const ClassDescription kLaunchProgram = {
    .clsid = ParseGuid(LAUNCH_PROGRAM_CLSID),
    .registry_script_id = LAUNCH_PROGRAM_REGISTRY_SCRIPT,
    .icon_id = LAUNCH_PROGRAM_ICON,
    .instances = {.class_name = "LaunchProgram",
                  .magic = ParseGuid("ECEC7E6C-8E18-4CA2-C56F-5334C2BD7945"),
                  .fields = kFields,
                  .default_name_id = text_id::kDefaultLaunchProgram},
    .dialog =
        {.template_id = LAUNCH_PROGRAM_DIALOG,
         .add_title_id = text_id::kAddLaunchProgram,
         .edit_title_id = text_id::kEditLaunchProgram,
         .name_control = LAUNCH_PROGRAM_NAME,
         // Deliberately a control that this dialog does not have: the focus stays where it is.
         .name_error_focus = 203,
         .titled_after_failed_load = false,
         .help_context = 131199,
         .bitmap_buttons = kBitmapButtons},
};

}  // namespace brantel
