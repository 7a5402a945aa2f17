#pragma once

#include "system/settings_store.h"

namespace brantel {

// What becomes of a key that cannot be opened.
enum class MissingKey { kCreated, kLeftMissing };

// The settings store in the registry, under HKEY_LOCAL_MACHINE.
class RegistrySettings final : public SettingsStore {
 public:
  constexpr explicit RegistrySettings(MissingKey missing_key = MissingKey::kCreated)
      : missing_key_(missing_key) {}

  std::unique_ptr<SettingsKey> Open(const std::string& path, SettingsAccess access) override;

 private:
  MissingKey missing_key_;
};

// Stateless, so that all use this one.
inline constinit RegistrySettings registry_settings;

}  // namespace brantel
