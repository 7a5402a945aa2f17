#include "port/port_settings_dialog.h"

#include "instance/class_settings.h"
#include "port/port_setting_buttons.h"
#include "text/string_table.h"

namespace brantel {

void PortSettingsDialog::Open() {
  settings_ = ReadSettings(store_, description_, profile_);
  for (const SettingEdit& edit : dialog_.edits) {
    view_.LimitTyping(edit.control, dialog_.longest_text);
    view_.SetText(edit.control, settings_[edit.setting]);
  }
  CheckSetting(view_, kBaudButtons, settings_[dialog_.baud_setting]);
  CheckSetting(view_, kComPortButtons, settings_[dialog_.com_port_setting]);
  for (const SettingCheckBox& box : dialog_.check_boxes) {
    view_.SetChecked(box.control, settings_[box.setting] == box.checked);
  }
  view_.SetTitle(LoadText(dialog_.title_id));
}

void PortSettingsDialog::Press(int control) {
  if (control == STANDARD_OK) {
    Accept();
  } else if (control == STANDARD_CANCEL) {
    view_.Close();
  } else if (control == STANDARD_HELP) {
    Help();
  }
}

void PortSettingsDialog::Help() {
  view_.ShowHelp(dialog_.help_context);
}

void PortSettingsDialog::Accept() {
  Collect();
  if (!WriteSettings(store_, description_, profile_, settings_)) {
    view_.ShowMessage(LoadText(text_id::kErrorSavingPortSettings), "", MessageIcon::kNone);
    return;
  }
  view_.Close();
}

void PortSettingsDialog::Collect() {
  for (const SettingEdit& edit : dialog_.edits) {
    settings_[edit.setting] = view_.Text(edit.control, dialog_.longest_text);
  }
  std::string& baud = settings_[dialog_.baud_setting];
  baud = CheckedSetting(view_, kBaudButtons, baud);
  std::string& port = settings_[dialog_.com_port_setting];
  port = CheckedSetting(view_, kComPortButtons, port);
  for (const SettingCheckBox& box : dialog_.check_boxes) {
    settings_[box.setting] = view_.IsChecked(box.control) ? box.checked : box.clear;
  }
}

}  // namespace brantel
