#include "modem/beeper_settings_dialog.h"

#include <array>

#include "framework/string_table.h"
#include "modem/beeper_settings.h"

namespace brantel {
namespace {

constexpr std::array<SettingEdit, 3> kEdits = {{
    {218, beeper_setting::kDialString},
    {219, beeper_setting::kModemString},
    {220, beeper_setting::kTimeout},
}};

}  // namespace

constinit const PortSettingsDialogSpec kBeeperSettingsDialog = {
    .template_id = 125,
    .title_id = text_id::kBeeperPortSettings,
    .help_context = 200000,
    .edits = kEdits,
    .longest_text = kSettingCapacity - 1,
    .com_port_setting = beeper_setting::kComPort,
    .baud_setting = beeper_setting::kBaud,
    .read = ReadBeeperSettings,
    .write = WriteBeeperSettings,
};

}  // namespace brantel
