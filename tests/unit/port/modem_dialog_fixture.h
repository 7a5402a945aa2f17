#pragma once

#include <cstddef>
#include <string>

#include "tests/unit/dialog/instance_dialog_fixture.h"
#include "tests/unit/system/fake_settings_store.h"

namespace brantel {

// Where the instance dialog of a modem class has what all of these have.
struct ModemDialogControls {
  int profile_list;
  int port_settings_button;
  int port_settings_template;
};

// The instance dialog of a modem class, with settings in memory.
class ModemDialogFixture : public ClassDialogFixture {
 protected:
  // `key` is the settings' path for profile 0.
  ModemDialogFixture(const ModemDialogControls& controls, std::string key)
      : key_(std::move(key)), controls_(controls) {}

  // `subkey` is empty for profile 0.
  void Store(const std::string& subkey, const std::string& name, const std::string& text);
  const std::string& Stored(const std::string& subkey, const std::string& name);

  // What an operator does in the list of profiles.
  void Choose(InstanceDialog& dialog, std::size_t position);

  // Opens the port settings by their button, and tells what an edit in them shows.
  std::string InPortSettings(InstanceDialog& dialog, int edit);

  // Opens the port settings, enters a text and presses OK there.
  void SaveInPortSettings(InstanceDialog& dialog, int edit, const std::string& text);

  void ExpectNoSettingsWritten();

  const std::string key_;
  FakeSettingsStore settings_;

 private:
  const ModemDialogControls controls_;
};

}  // namespace brantel
