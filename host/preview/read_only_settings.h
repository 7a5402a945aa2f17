#pragma once

#include <memory>
#include <optional>
#include <string>
#include <utility>

#include "system/settings_store.h"

namespace brantel::host {

// Settings that are looked at and not changed: a key cannot be opened for writing.
class ReadOnlySettings final : public SettingsStore {
 public:
  // The store must outlive the object.
  explicit ReadOnlySettings(SettingsStore& store) : store_(store) {}

  std::unique_ptr<SettingsKey> Open(const std::string& path, SettingsAccess access) override {
    if (access != SettingsAccess::kRead) return nullptr;
    return store_.Open(path, access);
  }

 private:
  SettingsStore& store_;
};

}  // namespace brantel::host
