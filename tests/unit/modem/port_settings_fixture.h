#pragma once

#include <gtest/gtest.h>

#include <string>
#include <utility>
#include <vector>

#include "modem/port_settings_dialog.h"
#include "tests/unit/framework/fake_dialog_view.h"
#include "tests/unit/framework/fake_settings_store.h"

namespace brantel {

// A dialog of port settings over a view and a store in memory.
class PortSettingsFixture : public ::testing::Test {
 protected:
  // `key` is the settings' path for profile 0.
  PortSettingsFixture(const PortSettingsDialogSpec& spec, std::string key)
      : key_(std::move(key)), spec_(spec) {}

  PortSettingsDialog Dialog(std::int32_t profile = 0) { return {spec_, view_, store_, profile}; }

  void Store(const std::string& name, const std::string& text) {
    store_.keys[key_][name] = {SettingType::kText, text};
  }

  std::string Stored(const std::string& name) { return Stored(name, key_); }
  std::string Stored(const std::string& name, const std::string& key) {
    const StoredSetting& setting = store_.keys[key][name];
    EXPECT_EQ(setting.type, SettingType::kText);
    return setting.data;
  }

  // The buttons that are checked.
  std::vector<int> Checked() {
    std::vector<int> checked;
    for (const auto& [control, is_checked] : view_.checks) {
      if (is_checked) checked.push_back(control);
    }
    return checked;
  }

  const std::string key_;
  FakeDialogView view_;
  FakeSettingsStore store_;

 private:
  const PortSettingsDialogSpec& spec_;
};

}  // namespace brantel
