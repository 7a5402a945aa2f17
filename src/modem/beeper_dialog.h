#pragma once

#include <cstdint>
#include <optional>

#include "framework/instance_dialog.h"
#include "framework/settings_store.h"

namespace brantel {

// The dialog of Beeper's instances. For the dialing options it offers the dial string of the
// selected settings profile, as soon as it opens and whenever the operator selects another one;
// deliberately also in place of what an instance has stored there, which nothing dials.
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
  // The profile whose dial string was offered last.
  std::optional<std::int32_t> shown_profile_;
};

}  // namespace brantel
