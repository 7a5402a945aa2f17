#pragma once

#include <windows.h>

#include <algorithm>
#include <stdexcept>

#include "tests/module/registry_tree.h"

namespace brantel {

inline constexpr const wchar_t* kBeeperSettingsKey =
    L"SOFTWARE\\Brantel\\Vantrel\\notification\\Beeper";

// Leaves the machine without settings of the Beeper, as it has to be before.
class NoBeeperSettings {
 public:
  NoBeeperSettings() {
    // Whoever reads settings leaves keys without values.
    const OwnedKey key = OpenKey(HKEY_LOCAL_MACHINE, kBeeperSettingsKey);
    if (key && HoldsValues(ReadTree(key.get()))) {
      throw std::runtime_error("this machine has settings of its own");
    }
  }
  NoBeeperSettings(const NoBeeperSettings&) = delete;
  NoBeeperSettings& operator=(const NoBeeperSettings&) = delete;
  ~NoBeeperSettings() {
    if (KeyExists(HKEY_LOCAL_MACHINE, kBeeperSettingsKey)) {
      DeleteTree(HKEY_LOCAL_MACHINE, kBeeperSettingsKey);
    }
  }

 private:
  static bool HoldsValues(const StoredKey& key) {
    return !key.values.empty() || std::ranges::any_of(key.subkeys, [](const auto& subkey) {
      return HoldsValues(subkey.second);
    });
  }
};

}  // namespace brantel
