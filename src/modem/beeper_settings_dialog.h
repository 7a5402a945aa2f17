#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include "framework/dialog.h"
#include "framework/dialog_view.h"
#include "framework/settings_store.h"

namespace brantel {

// The dialog in which an operator changes the Beeper's settings of a profile.
class BeeperSettingsDialog final : public Dialog {
 public:
  // View and store must outlive the object.
  BeeperSettingsDialog(DialogView& view, SettingsStore& store, std::int32_t profile)
      : view_(view), store_(store), profile_(profile) {}

  [[nodiscard]] int template_id() const override;
  void Open() override;

  // OK writes all settings and closes the dialog. When they cannot be written that is told in a
  // message box, and the dialog stays.
  void Press(int control) override;
  void Help() override;

 private:
  void Accept();
  void Collect();

  DialogView& view_;
  SettingsStore& store_;
  const std::int32_t profile_;
  // What was read, and then what is to be written. What the dialog cannot show stays in it.
  std::vector<std::string> settings_;
};

}  // namespace brantel
