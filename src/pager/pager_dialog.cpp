#include "pager/pager_dialog.h"

#include <array>

#include "pager/pager_description.h"
#include "pager/pager_ids.h"

namespace brantel {
namespace {

constexpr std::array<SettingEdit, 1> kEdits = {
    {{PAGER_SETTING_MODEM_STRING, pager_setting::kModemString}}};

constexpr std::array<SettingCheckBox, 1> kCheckBoxes = {
    {{PAGER_SETTING_8N1, pager_setting::k8N1, kFramed8N1, kFramed7E1}}};

}  // namespace

constinit const ModemDialogDescription kPagerDialog = {
    .notifier_class = kPager,
    .profile_list = PAGER_MODEM_SETUP,
    .port_settings_button = PAGER_PORT_SETTINGS,
    .port_settings = {.template_id = PAGER_SETTINGS_DIALOG,
                      .title_id = text_id::kPagerPortSettings,
                      .help_context = 200001,
                      .edits = kEdits,
                      // One more than the Beeper's settings have: what fills the capacity can be
                      // read again, too.
                      .longest_text = kSettingCapacity,
                      .com_port_setting = pager_setting::kComPort,
                      .baud_setting = pager_setting::kBaud,
                      .check_boxes = kCheckBoxes},
};

}  // namespace brantel
