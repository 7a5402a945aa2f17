#include "modem/beeper_dialog.h"

#include "modem/beeper_layout.h"
#include "modem/beeper_settings.h"
#include "modem/beeper_settings_dialog.h"

namespace brantel {
namespace {

constexpr int kNameEdit = 223;
constexpr int kDialingOptionsEdit = 219;

constexpr ModemInstanceDialogSpec kSpec = {
    .dialog = {.layout = kBeeperLayout,
               .template_id = 120,
               .add_title_id = text_id::kAddBeeper,
               .edit_title_id = text_id::kEditBeeper,
               .name_control = kNameEdit,
               .name_error_focus = kNameEdit,
               .help_context = 131197},
    .profile_field = beeper_field::kSettingsProfile,
    .profile_list = 251,
    .port_settings_button = 228,
    .port_settings = kBeeperSettingsDialog,
};

}  // namespace

BeeperDialog::BeeperDialog(DialogView& view, InstanceFiles& files, InstanceDialogCall call,
                           SettingsStore& settings)
    : ModemInstanceDialog(kSpec, view, files, std::move(call), settings) {}

void BeeperDialog::SelectionChanged(int /*list*/) {
  const std::int32_t profile = Profile();
  if (profile == shown_profile_) return;
  shown_profile_ = profile;
  const auto stored = ReadBeeperSettings(settings(), profile);
  view().SetText(kDialingOptionsEdit, stored[beeper_setting::kDialString]);
}

}  // namespace brantel
