#pragma once

#include <windows.h>

#include <algorithm>
#include <stdexcept>

#include "tests/module/registry_tree.h"

namespace brantel {

inline constexpr const wchar_t* kBeeperSettingsKey =
    LR"(SOFTWARE\Brantel\Vantrel\notification\Beeper)";
inline constexpr const wchar_t* kPagerSettingsKey =
    LR"(SOFTWARE\Brantel\Vantrel\notification\Pager)";

// Leaves the machine without settings of a class, as it has to be before.
class NoSettings {
 public:
  // The path of the class's settings, which must outlive the object.
  explicit NoSettings(const wchar_t* key_path) : key_path_(key_path) {
    // Whoever reads settings leaves keys without values.
    const OwnedKey key = OpenKey(HKEY_LOCAL_MACHINE, key_path_);
    if (key && HoldsValues(ReadTree(key.get()))) {
      throw std::runtime_error("this machine has settings of its own");
    }
  }
  NoSettings(const NoSettings&) = delete;
  NoSettings& operator=(const NoSettings&) = delete;
  ~NoSettings() {
    if (KeyExists(HKEY_LOCAL_MACHINE, key_path_)) DeleteTree(HKEY_LOCAL_MACHINE, key_path_);
  }

 private:
  static bool HoldsValues(const StoredKey& key) {
    return !key.values.empty() || std::ranges::any_of(key.subkeys, [](const auto& subkey) {
      return HoldsValues(subkey.key);
    });
  }

  const wchar_t* const key_path_;
};

}  // namespace brantel
