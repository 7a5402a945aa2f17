#pragma once

#include "system/settings_store.h"

namespace brantel {

// The settings store in the registry, under HKEY_LOCAL_MACHINE.
class RegistrySettings final : public SettingsStore {
 public:
  std::unique_ptr<SettingsKey> Open(const std::string& path, SettingsAccess access) override;
};

// Stateless, so that all use this one.
inline constinit RegistrySettings registry_settings;

}  // namespace brantel
