#pragma once

#include <array>
#include <span>
#include <string>
#include <string_view>

#include "framework/dialog_view.h"

namespace brantel {

// A radio button, and the setting that it stands for.
struct SettingButton {
  int control = 0;
  std::string_view setting{};
};

inline constexpr std::array<SettingButton, 4> kComPortButtons = {{
    {227, "COM1"},
    {228, "COM2"},
    {229, "COM3"},
    {230, "COM4"},
}};

inline constexpr std::array<SettingButton, 3> kBaudButtons = {{
    {224, "300"},
    {225, "1200"},
    {226, "2400"},
}};

// Checks the button that stands for exactly this setting; none when there is no such button, since
// other programs write settings that the dialogs do not offer.
void CheckSetting(DialogView& view, std::span<const SettingButton> buttons,
                  std::string_view setting);

// The setting of the checked button, or `otherwise` when none is checked.
std::string CheckedSetting(DialogView& view, std::span<const SettingButton> buttons,
                           const std::string& otherwise);

}  // namespace brantel
