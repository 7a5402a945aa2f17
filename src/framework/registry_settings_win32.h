#pragma once

#include "framework/settings_store.h"

namespace brantel {

// The settings store in the registry, under HKEY_LOCAL_MACHINE.
class RegistrySettings final : public SettingsStore {
 public:
  std::unique_ptr<SettingsKey> Open(const std::string& path, SettingsAccess access) override;
};

}  // namespace brantel
