#pragma once

#include <cstddef>
#include <cstdint>

#include "framework/instance_dialog.h"
#include "framework/settings_store.h"
#include "modem/port_settings_dialog.h"

namespace brantel {

// What the instance dialogs of the modem classes have beside the others.
struct ModemInstanceDialogSpec {
  InstanceDialogSpec dialog;
  std::size_t profile_field = 0;
  int profile_list = 0;
  int port_settings_button = 0;
  const PortSettingsDialogSpec& port_settings;
};

// The dialog of a modem class's instances: it offers the settings profiles, and a button opens the
// settings of the selected one.
class ModemInstanceDialog : public InstanceDialog {
 public:
  // All but the call must outlive the object.
  ModemInstanceDialog(const ModemInstanceDialogSpec& spec, DialogView& view, InstanceFiles& files,
                      InstanceDialogCall call, SettingsStore& settings)
      : InstanceDialog(spec.dialog, view, files, std::move(call)),
        spec_(spec),
        settings_(settings) {}

 protected:
  // The selected profile; the instance's own while none is selected, because the list does not
  // offer it.
  std::int32_t Profile();

  [[nodiscard]] SettingsStore& settings() { return settings_; }

 private:
  void FillLists() override;
  void PressOwnButton(int control) override;

  const ModemInstanceDialogSpec& spec_;
  SettingsStore& settings_;
};

}  // namespace brantel
