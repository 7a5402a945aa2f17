#include "modem/pager_settings_dialog.h"

#include <array>

#include "framework/string_table.h"
#include "modem/pager_settings.h"

namespace brantel {
namespace {

constexpr std::array<SettingEdit, 1> kEdits = {{{219, pager_setting::kModemString}}};

constexpr std::array<SettingCheckBox, 1> kCheckBoxes = {
    {{235, pager_setting::k8N1, kFramed8N1, kFramed7E1}}};

}  // namespace

constinit const PortSettingsDialogSpec kPagerSettingsDialog = {
    .template_id = 138,
    .title_id = text_id::kPagerPortSettings,
    .help_context = 200001,
    .edits = kEdits,
    // One more than the Beeper's settings have: what fills the capacity can be read again, too.
    .longest_text = kSettingCapacity,
    .com_port_setting = pager_setting::kComPort,
    .baud_setting = pager_setting::kBaud,
    .check_boxes = kCheckBoxes,
    .read = ReadPagerSettings,
    .write = WritePagerSettings,
};

}  // namespace brantel
