#include "port/modem_instance_dialog.h"

#include <memory>

#include "port/settings_profile_list.h"

namespace brantel {

void ModemInstanceDialog::FillLists() {
  FillProfileList(view(), dialog_.profile_list);
}

void ModemInstanceDialog::PressOwnButton(int control) {
  if (control != dialog_.port_settings_button) return;
  view().ShowDialog([this](DialogView& over) {
    return std::make_unique<PortSettingsDialog>(
        dialog_.port_settings, dialog_.notifier_class.settings, over, settings_, Profile());
  });
}

std::int32_t ModemInstanceDialog::Profile() {
  const auto selected = view().SelectedItem(dialog_.profile_list);
  return selected ? static_cast<std::int32_t>(*selected)
                  : instance().integer(*dialog_.notifier_class.profile_field);
}

}  // namespace brantel
