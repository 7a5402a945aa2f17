#pragma once

#include <gtest/gtest.h>

#include <string>
#include <utility>

#include "port/modem_instance_dialog.h"
#include "tests/unit/dialog/fake_dialog_view.h"
#include "tests/unit/system/fake_settings_store.h"

namespace brantel {

// A dialog of port settings over a view and a store in memory.
class PortSettingsFixture : public ::testing::Test {
 protected:
  // `key` is the settings' path for profile 0.
  PortSettingsFixture(const ModemDialogDescription& dialog, std::string key)
      : key_(std::move(key)), dialog_(dialog) {}

  PortSettingsDialog Dialog(std::int32_t profile = 0) {
    return {dialog_.port_settings, dialog_.notifier_class.settings, view_, store_, profile};
  }

  void Store(const std::string& name, const std::string& text) {
    store_.keys[key_][name] = {SettingType::kText, text};
  }

  std::string Stored(const std::string& name) { return Stored(name, key_); }
  std::string Stored(const std::string& name, const std::string& key) {
    const StoredSetting& setting = store_.keys[key][name];
    EXPECT_EQ(setting.type, SettingType::kText);
    return setting.data;
  }

  const std::string key_;
  FakeDialogView view_;
  FakeSettingsStore store_;

 private:
  const ModemDialogDescription& dialog_;
};

}  // namespace brantel
