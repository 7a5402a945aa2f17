#pragma once

#include <cstdint>
#include <optional>

#include "framework/instance_dialog.h"
#include "framework/settings_store.h"

namespace brantel {

// The dialog of Beeper's instances. It offers the dial string of the selected settings profile for
// the dialing options: to a new instance, and whenever the operator selects another profile. What
// an instance has stored there stays until then.
class BeeperDialog final : public InstanceDialog {
 public:
  // All but the call must outlive the object.
  BeeperDialog(DialogView& view, InstanceFiles& files, InstanceDialogCall call,
               SettingsStore& settings);

 private:
  void FillLists() override;
  void SelectionChanged(int list) override;
  void PressOwnButton(int control) override;

  // The selected profile; the instance's own while none is selected, because the list does not
  // offer it.
  std::int32_t Profile();

  SettingsStore& settings_;
  // The profile for which the dialing options were shown last; none in a new instance's dialog that
  // is still to be filled.
  std::optional<std::int32_t> shown_profile_;
};

}  // namespace brantel
