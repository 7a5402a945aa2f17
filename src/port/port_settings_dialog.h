#pragma once

#include <cstddef>
#include <cstdint>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "description/class_description.h"
#include "dialog/dialog.h"
#include "dialog/dialog_view.h"
#include "system/settings_store.h"

namespace brantel {

// An edit, and the setting that it shows.
struct SettingEdit {
  int control = 0;
  std::size_t setting = 0;
};

// A check box, and the setting that it shows: checked for exactly one text, clear for all others.
struct SettingCheckBox {
  int control = 0;
  std::size_t setting = 0;
  std::string_view checked{};
  std::string_view clear{};  // what is written when it is not checked
};

// What the dialog of a class's port settings is. Its buttons for ports and rates are the same for
// all classes.
struct PortSettingsDescription {
  int template_id = 0;
  unsigned title_id = 0;
  unsigned help_context = 0;
  std::span<const SettingEdit> edits{};
  std::size_t longest_text = 0;  // that is taken from an edit
  std::size_t com_port_setting = 0;
  std::size_t baud_setting = 0;
  std::span<const SettingCheckBox> check_boxes{};
};

// The dialog in which an operator changes a class's settings of a profile.
class PortSettingsDialog final : public Dialog {
 public:
  // What is passed by reference must outlive the object.
  PortSettingsDialog(const PortSettingsDescription& dialog, const SettingsDescription& settings,
                     DialogView& view, SettingsStore& store, std::int32_t profile)
      : dialog_(dialog), description_(settings), view_(view), store_(store), profile_(profile) {}

  [[nodiscard]] int template_id() const override { return dialog_.template_id; }
  void Open() override;

  // OK writes all settings and closes the dialog. When they cannot be written that is told in a
  // message box, and the dialog stays.
  void Press(int control) override;
  void Help() override;

 private:
  void Accept();
  void Collect();

  const PortSettingsDescription& dialog_;
  const SettingsDescription& description_;
  DialogView& view_;
  SettingsStore& store_;
  const std::int32_t profile_;
  // What was read, and then what is to be written. What the dialog cannot show stays in it.
  std::vector<std::string> settings_;
};

}  // namespace brantel
