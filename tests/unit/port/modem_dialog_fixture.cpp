#include "tests/unit/port/modem_dialog_fixture.h"

#include <gmock/gmock.h>

#include "description/standard_buttons.h"

namespace brantel {

using ::testing::Contains;
using ::testing::ElementsAre;
using ::testing::Not;
using ::testing::StartsWith;

void ModemDialogFixture::Store(const std::string& subkey, const std::string& name,
                               const std::string& text) {
  settings_.keys[key_ + subkey][name] = {SettingType::kText, text};
}

const std::string& ModemDialogFixture::Stored(const std::string& subkey, const std::string& name) {
  return settings_.keys[key_ + subkey][name].data;
}

void ModemDialogFixture::Choose(InstanceDialog& dialog, std::size_t position) {
  view_.SelectItem(controls_.profile_list, position);
  dialog.Select(controls_.profile_list);
}

std::string ModemDialogFixture::InPortSettings(InstanceDialog& dialog, int edit) {
  std::string text;
  view_.in_shown_dialog = [&](Dialog& shown, FakeDialogView& view) {
    EXPECT_EQ(shown.template_id(), controls_.port_settings_template);
    text = view.texts[edit];
  };
  dialog.Press(controls_.port_settings_button);
  return text;
}

void ModemDialogFixture::SaveInPortSettings(InstanceDialog& dialog, int edit,
                                            const std::string& text) {
  view_.in_shown_dialog = [&](Dialog& shown, FakeDialogView& view) {
    view.texts[edit] = text;
    shown.Press(STANDARD_OK);
    EXPECT_THAT(view.events, ElementsAre("close"));
  };
  dialog.Press(controls_.port_settings_button);
}

void ModemDialogFixture::ExpectNoSettingsWritten() {
  EXPECT_THAT(settings_.calls, Not(Contains(StartsWith("write"))));
}

}  // namespace brantel
