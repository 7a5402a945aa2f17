#pragma once

#include "dialog/instance_dialog.h"
#include "dialog/sound_recorder.h"

namespace brantel {

// The dialog of Sound's instances.
class SoundDialog final : public InstanceDialog {
 public:
  // All but the call must outlive the object.
  SoundDialog(DialogView& view, InstanceFiles& files, InstanceDialogCall call,
              RecorderSystem& recorder_system);

 private:
  void PressOwnButton(int control) override;

  SoundRecorder recorder_;
};

}  // namespace brantel
