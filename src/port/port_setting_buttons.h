#pragma once

#include <array>
#include <span>
#include <string>
#include <string_view>

#include "dialog/dialog_view.h"
#include "port/port_setting_ids.h"

namespace brantel {

// A radio button, and the setting that it stands for.
struct SettingButton {
  int control = 0;
  std::string_view setting{};
};

inline constexpr std::array<SettingButton, 4> kComPortButtons = {{
    {PORT_COM_1, "COM1"},
    {PORT_COM_2, "COM2"},
    {PORT_COM_3, "COM3"},
    {PORT_COM_4, "COM4"},
}};

inline constexpr std::array<SettingButton, 3> kBaudButtons = {{
    {PORT_BAUD_300, "300"},
    {PORT_BAUD_1200, "1200"},
    {PORT_BAUD_2400, "2400"},
}};

// Checks the button that stands for exactly this setting; none when there is no such button, since
// other programs write settings that the dialogs do not offer.
void CheckSetting(DialogView& view, std::span<const SettingButton> buttons,
                  std::string_view setting);

// The setting of the checked button, or `otherwise` when none is checked.
std::string CheckedSetting(DialogView& view, std::span<const SettingButton> buttons,
                           const std::string& otherwise);

}  // namespace brantel
