#pragma once

#include <cstdint>
#include <optional>

#include "port/modem_instance_dialog.h"

namespace brantel {

// What Beeper's dialogs have beside the others.
extern const ModemDialogDescription kBeeperDialog;

// The dialog of Beeper's instances. For the dialing options it offers the dial string of the
// selected settings profile, as soon as it opens and whenever the operator selects another one;
// deliberately also in place of what an instance has stored there, which nothing dials.
class BeeperDialog final : public ModemInstanceDialog {
 public:
  // All but the call must outlive the object.
  BeeperDialog(DialogView& view, InstanceFiles& files, InstanceDialogCall call,
               SettingsStore& settings);

 private:
  void SelectionChanged(int list) override;

  // The profile whose dial string was offered last.
  std::optional<std::int32_t> shown_profile_;
};

}  // namespace brantel
