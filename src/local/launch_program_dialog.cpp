#include "local/launch_program_dialog.h"

#include <array>

#include "local/launch_program_layout.h"
#include "resources/bitmap_ids.h"

namespace brantel {
namespace {

constexpr int kProgramEdit = 219;
constexpr int kBrowseProgramButton = 221;
constexpr int kWorkingPathEdit = 222;
constexpr int kBrowseWorkingPathButton = 223;

constexpr FileKind kPrograms = {text_id::kProgramFiles, "*.exe"};

constexpr std::array<BitmapButton, 2> kBitmapButtons = {{
    {kBrowseProgramButton, BITMAP_BROWSE},
    {kBrowseWorkingPathButton, BITMAP_BROWSE},
}};

constexpr InstanceDialogSpec kSpec = {
    .layout = kLaunchProgramLayout,
    .template_id = 118,
    .add_title_id = text_id::kAddLaunchProgram,
    .edit_title_id = text_id::kEditLaunchProgram,
    .name_control = 218,
    // Deliberately a control that this dialog does not have: the focus stays where it is.
    .name_error_focus = 203,
    .titled_after_failed_load = false,
    .help_context = 131199,
    .bitmap_buttons = kBitmapButtons,
};

}  // namespace

LaunchProgramDialog::LaunchProgramDialog(DialogView& view, InstanceFiles& files,
                                         InstanceDialogCall call, ProcessStarter& starter)
    : InstanceDialog(kSpec, view, files, std::move(call)), starter_(starter) {}

void LaunchProgramDialog::PressOwnButton(int control) {
  if (control == kBrowseProgramButton) {
    BrowseForFile(kProgramEdit, kPrograms);
  } else if (control == kBrowseWorkingPathButton) {
    BrowseForWorkingPath();
  }
}

void LaunchProgramDialog::BrowseForWorkingPath() {
  const auto directory = view().ChooseDirectory(LoadText(text_id::kSelectDirectory));
  if (!directory) return;
  if (starter_.CanStartIn(*directory)) {
    view().SetText(kWorkingPathEdit, *directory);
  } else {
    view().ShowMessage(LoadText(text_id::kDirectoryInvalid), "", MessageIcon::kError);
  }
}

}  // namespace brantel
