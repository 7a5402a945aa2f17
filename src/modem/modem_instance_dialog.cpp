#include "modem/modem_instance_dialog.h"

#include <memory>

#include "modem/settings_profile_list.h"

namespace brantel {

void ModemInstanceDialog::FillLists() {
  FillProfileList(view(), spec_.profile_list);
}

void ModemInstanceDialog::PressOwnButton(int control) {
  if (control != spec_.port_settings_button) return;
  view().ShowDialog([this](DialogView& over) {
    return std::make_unique<PortSettingsDialog>(spec_.port_settings, over, settings_, Profile());
  });
}

std::int32_t ModemInstanceDialog::Profile() {
  const auto selected = view().SelectedItem(spec_.profile_list);
  return selected ? static_cast<std::int32_t>(*selected) : instance().integer(spec_.profile_field);
}

}  // namespace brantel
