#include "beeper/beeper_dialog.h"

#include <array>

#include "beeper/beeper_description.h"
#include "beeper/beeper_ids.h"
#include "instance/class_settings.h"

namespace brantel {
namespace {

constexpr std::array<SettingEdit, 3> kEdits = {{
    {BEEPER_SETTING_DIAL_STRING, beeper_setting::kDialString},
    {BEEPER_SETTING_MODEM_STRING, beeper_setting::kModemString},
    {BEEPER_SETTING_TIMEOUT, beeper_setting::kTimeout},
}};

}  // namespace

constinit const ModemDialogDescription kBeeperDialog = {
    .notifier_class = kBeeper,
    .profile_list = BEEPER_MODEM_SETUP,
    .port_settings_button = BEEPER_PORT_SETTINGS,
    .port_settings = {.template_id = BEEPER_SETTINGS_DIALOG,
                      .title_id = text_id::kBeeperPortSettings,
                      .help_context = 200000,
                      .edits = kEdits,
                      .longest_text = kSettingCapacity - 1,
                      .com_port_setting = beeper_setting::kComPort,
                      .baud_setting = beeper_setting::kBaud},
};

BeeperDialog::BeeperDialog(DialogView& view, InstanceFiles& files, InstanceDialogCall call,
                           SettingsStore& settings)
    : ModemInstanceDialog(kBeeperDialog, view, files, std::move(call), settings) {}

void BeeperDialog::SelectionChanged(int /*list*/) {
  const std::int32_t profile = Profile();
  if (profile == shown_profile_) return;
  shown_profile_ = profile;
  const auto stored = ReadSettings(settings(), kBeeper.settings, profile);
  view().SetText(BEEPER_DIALING_OPTIONS, stored[beeper_setting::kDialString]);
}

}  // namespace brantel
