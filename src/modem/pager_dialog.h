#pragma once

#include "modem/modem_instance_dialog.h"

namespace brantel {

// The dialog of Pager's instances.
class PagerDialog final : public ModemInstanceDialog {
 public:
  // All but the call must outlive the object.
  PagerDialog(DialogView& view, InstanceFiles& files, InstanceDialogCall call,
              SettingsStore& settings);
};

}  // namespace brantel
