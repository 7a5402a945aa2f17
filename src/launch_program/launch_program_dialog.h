#pragma once

#include "dialog/instance_dialog.h"
#include "launch_program/process_starter.h"

namespace brantel {

// The dialog of LaunchProgram's instances.
class LaunchProgramDialog final : public InstanceDialog {
 public:
  // All but the call must outlive the object.
  LaunchProgramDialog(DialogView& view, InstanceFiles& files, InstanceDialogCall call,
                      ProcessStarter& starter);

 private:
  void PressOwnButton(int control) override;
  void BrowseForWorkingPath();

  ProcessStarter& starter_;
};

}  // namespace brantel
