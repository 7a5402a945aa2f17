#pragma once

#include <cstddef>
#include <cstdint>

#include "dialog/instance_dialog.h"
#include "port/port_settings_dialog.h"
#include "system/settings_store.h"

namespace brantel {

// What the instance dialogs of the modem classes have beside the others.
struct ModemDialogDescription {
  const ClassDescription& notifier_class;
  int profile_list = 0;
  int port_settings_button = 0;
  PortSettingsDescription port_settings;
};

// The dialog of a modem class's instances: it offers the settings profiles, and a button opens the
// settings of the selected one.
class ModemInstanceDialog : public InstanceDialog {
 public:
  // All but the call must outlive the object.
  ModemInstanceDialog(const ModemDialogDescription& dialog, DialogView& view, InstanceFiles& files,
                      InstanceDialogCall call, SettingsStore& settings)
      : InstanceDialog(dialog.notifier_class, view, files, std::move(call)),
        dialog_(dialog),
        settings_(settings) {}

 protected:
  // The selected profile; the instance's own while none is selected, because the list does not
  // offer it.
  std::int32_t Profile();

  [[nodiscard]] SettingsStore& settings() { return settings_; }

 private:
  void FillLists() override;
  void PressOwnButton(int control) override;

  const ModemDialogDescription& dialog_;
  SettingsStore& settings_;
};

}  // namespace brantel
