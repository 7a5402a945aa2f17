#include "modem/port_settings_dialog.h"

#include "framework/string_table.h"
#include "modem/port_setting_buttons.h"

namespace brantel {

void PortSettingsDialog::Open() {
  settings_ = spec_.read(store_, profile_);
  for (const SettingEdit& edit : spec_.edits) {
    view_.LimitTyping(edit.control, spec_.longest_text);
    view_.SetText(edit.control, settings_[edit.setting]);
  }
  CheckSetting(view_, kBaudButtons, settings_[spec_.baud_setting]);
  CheckSetting(view_, kComPortButtons, settings_[spec_.com_port_setting]);
  for (const SettingCheckBox& box : spec_.check_boxes) {
    view_.SetChecked(box.control, settings_[box.setting] == box.checked);
  }
  view_.SetTitle(LoadText(spec_.title_id));
}

void PortSettingsDialog::Press(int control) {
  if (control == kOkButton) {
    Accept();
  } else if (control == kCancelButton) {
    view_.Close();
  } else if (control == kHelpButton) {
    Help();
  }
}

void PortSettingsDialog::Help() {
  view_.ShowHelp(spec_.help_context);
}

void PortSettingsDialog::Accept() {
  Collect();
  if (!spec_.write(store_, profile_, settings_)) {
    view_.ShowMessage(LoadText(text_id::kErrorSavingPortSettings), "", MessageIcon::kNone);
    return;
  }
  view_.Close();
}

void PortSettingsDialog::Collect() {
  for (const SettingEdit& edit : spec_.edits) {
    settings_[edit.setting] = view_.Text(edit.control, spec_.longest_text);
  }
  std::string& baud = settings_[spec_.baud_setting];
  baud = CheckedSetting(view_, kBaudButtons, baud);
  std::string& port = settings_[spec_.com_port_setting];
  port = CheckedSetting(view_, kComPortButtons, port);
  for (const SettingCheckBox& box : spec_.check_boxes) {
    settings_[box.setting] = view_.IsChecked(box.control) ? box.checked : box.clear;
  }
}

}  // namespace brantel
