#include "modem/beeper_settings_dialog.h"

#include <array>

#include "framework/string_table.h"
#include "modem/beeper_settings.h"
#include "modem/port_setting_buttons.h"

namespace brantel {
namespace {

constexpr int kTemplateId = 125;
constexpr unsigned kHelpContext = 200000;

// A longer setting could not be read again.
constexpr std::size_t kLongestSetting = kSettingCapacity - 1;

struct SettingEdit {
  int control;
  std::size_t setting;
};

constexpr std::array<SettingEdit, 3> kEdits = {{
    {218, beeper_setting::kDialString},
    {219, beeper_setting::kModemString},
    {220, beeper_setting::kTimeout},
}};

}  // namespace

int BeeperSettingsDialog::template_id() const {
  return kTemplateId;
}

void BeeperSettingsDialog::Open() {
  settings_ = ReadBeeperSettings(store_, profile_);
  for (const SettingEdit& edit : kEdits) {
    view_.LimitTyping(edit.control, kLongestSetting);
    view_.SetText(edit.control, settings_[edit.setting]);
  }
  CheckSetting(view_, kBaudButtons, settings_[beeper_setting::kBaud]);
  CheckSetting(view_, kComPortButtons, settings_[beeper_setting::kComPort]);
  view_.SetTitle(LoadText(text_id::kBeeperPortSettings));
}

void BeeperSettingsDialog::Press(int control) {
  if (control == kOkButton) {
    Accept();
  } else if (control == kCancelButton) {
    view_.Close();
  } else if (control == kHelpButton) {
    Help();
  }
}

void BeeperSettingsDialog::Help() {
  view_.ShowHelp(kHelpContext);
}

void BeeperSettingsDialog::Accept() {
  Collect();
  if (!WriteBeeperSettings(store_, profile_, settings_)) {
    view_.ShowMessage(LoadText(text_id::kErrorSavingPortSettings), "", MessageIcon::kNone);
    return;
  }
  view_.Close();
}

void BeeperSettingsDialog::Collect() {
  for (const SettingEdit& edit : kEdits) {
    settings_[edit.setting] = view_.Text(edit.control, kLongestSetting);
  }
  std::string& baud = settings_[beeper_setting::kBaud];
  baud = CheckedSetting(view_, kBaudButtons, baud);
  std::string& port = settings_[beeper_setting::kComPort];
  port = CheckedSetting(view_, kComPortButtons, port);
}

}  // namespace brantel
