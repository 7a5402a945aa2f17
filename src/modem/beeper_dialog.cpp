#include "modem/beeper_dialog.h"

#include "modem/beeper_layout.h"
#include "modem/beeper_settings.h"
#include "modem/beeper_settings_dialog.h"
#include "modem/settings_profile_list.h"

namespace brantel {
namespace {

constexpr int kNameEdit = 223;
constexpr int kDialingOptionsEdit = 219;
constexpr int kPortSettingsButton = 228;
constexpr int kProfileList = 251;

constexpr InstanceDialogSpec kSpec = {
    .layout = kBeeperLayout,
    .template_id = 120,
    .add_title_id = text_id::kAddBeeper,
    .edit_title_id = text_id::kEditBeeper,
    .name_control = kNameEdit,
    .name_error_focus = kNameEdit,
    .help_context = 131197,
};

}  // namespace

BeeperDialog::BeeperDialog(DialogView& view, InstanceFiles& files, InstanceDialogCall call,
                           SettingsStore& settings)
    : InstanceDialog(kSpec, view, files, std::move(call)), settings_(settings) {}

void BeeperDialog::FillLists() {
  FillProfileList(view(), kProfileList);
}

void BeeperDialog::SelectionChanged(int /*list*/) {
  const std::int32_t profile = Profile();
  if (profile == shown_profile_) return;
  shown_profile_ = profile;
  const auto settings = ReadBeeperSettings(settings_, profile);
  view().SetText(kDialingOptionsEdit, settings[beeper_setting::kDialString]);
}

void BeeperDialog::PressOwnButton(int control) {
  if (control != kPortSettingsButton) return;
  view().ShowDialog([this](DialogView& over) {
    return std::make_unique<BeeperSettingsDialog>(over, settings_, Profile());
  });
}

std::int32_t BeeperDialog::Profile() {
  const auto selected = view().SelectedItem(kProfileList);
  return selected ? static_cast<std::int32_t>(*selected)
                  : instance().integer(beeper_field::kSettingsProfile);
}

}  // namespace brantel
