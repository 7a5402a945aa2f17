#include "modem/pager_dialog.h"

#include "modem/pager_layout.h"
#include "modem/pager_settings_dialog.h"

namespace brantel {
namespace {

constexpr int kNameEdit = 222;

constexpr ModemInstanceDialogSpec kSpec = {
    .dialog = {.layout = kPagerLayout,
               .template_id = 137,
               .add_title_id = text_id::kAddPager,
               .edit_title_id = text_id::kEditPager,
               .name_control = kNameEdit,
               .name_error_focus = kNameEdit,
               .name_missing_text_id = text_id::kDisplayNameMissing,
               .help_context = 131196},
    .profile_field = pager_field::kSettingsProfile,
    .profile_list = 251,
    .port_settings_button = 234,
    .port_settings = kPagerSettingsDialog,
};

}  // namespace

PagerDialog::PagerDialog(DialogView& view, InstanceFiles& files, InstanceDialogCall call,
                         SettingsStore& settings)
    : ModemInstanceDialog(kSpec, view, files, std::move(call), settings) {}

}  // namespace brantel
