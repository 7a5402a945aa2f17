#include "port/port_setting_buttons.h"

#include <algorithm>

namespace brantel {

void CheckSetting(DialogView& view, std::span<const SettingButton> buttons,
                  std::string_view setting) {
  // Without a match the buttons are left alone: unchecking them all would take them from the Tab
  // key's way.
  if (std::ranges::find(buttons, setting, &SettingButton::setting) == buttons.end()) return;
  for (const SettingButton& button : buttons) {
    view.SetChecked(button.control, button.setting == setting);
  }
}

std::string CheckedSetting(DialogView& view, std::span<const SettingButton> buttons,
                           const std::string& otherwise) {
  const auto checked = std::ranges::find_if(
      buttons, [&](const SettingButton& button) { return view.IsChecked(button.control); });
  return checked == buttons.end() ? otherwise : std::string(checked->setting);
}

}  // namespace brantel
