#include "launch_program/launch_program_dialog.h"

#include <array>

#include "launch_program/launch_program_description.h"
#include "launch_program/launch_program_ids.h"

namespace brantel {
namespace {

constexpr FileKind kPrograms = {text_id::kProgramFiles, "*.exe"};

}  // namespace

LaunchProgramDialog::LaunchProgramDialog(DialogView& view, InstanceFiles& files,
                                         InstanceDialogCall call, ProcessStarter& starter)
    : InstanceDialog(kLaunchProgram, view, files, std::move(call)), starter_(starter) {}

void LaunchProgramDialog::PressOwnButton(int control) {
  if (control == LAUNCH_PROGRAM_BROWSE_FILENAME) {
    BrowseForFile(LAUNCH_PROGRAM_FILENAME, kPrograms);
  } else if (control == LAUNCH_PROGRAM_BROWSE_WORKING_PATH) {
    BrowseForWorkingPath();
  }
}

void LaunchProgramDialog::BrowseForWorkingPath() {
  const auto directory = view().ChooseDirectory(LoadText(text_id::kSelectDirectory));
  if (!directory) return;
  if (starter_.CanStartIn(*directory)) {
    view().SetText(LAUNCH_PROGRAM_WORKING_PATH, *directory);
  } else {
    view().ShowMessage(LoadText(text_id::kDirectoryInvalid), "", MessageIcon::kError);
  }
}

}  // namespace brantel
