#pragma once

#include <map>
#include <memory>
#include <string>
#include <utility>
#include <vector>

#include "system/settings_store.h"

namespace brantel {

// Settings in memory.
class FakeSettingsStore final : public SettingsStore {
 public:
  using Values = std::map<std::string, StoredSetting>;

  std::map<std::string, Values> keys;
  bool opens = true;
  // "open PATH", "read NAME", "write NAME", in order.
  std::vector<std::string> calls;

  std::unique_ptr<SettingsKey> Open(const std::string& path, SettingsAccess) override {
    calls.push_back("open " + path);
    if (!opens) return nullptr;
    return std::make_unique<Key>(keys[path], calls);
  }

 private:
  class Key final : public SettingsKey {
   public:
    Key(Values& values, std::vector<std::string>& calls) : values_(values), calls_(calls) {}

    std::optional<StoredSetting> Read(const std::string& name) override {
      calls_.push_back("read " + name);
      const auto value = values_.find(name);
      if (value == values_.end()) return std::nullopt;
      return value->second;
    }

    bool Write(const std::string& name, const StoredSetting& setting) override {
      calls_.push_back("write " + name);
      values_[name] = setting;
      return true;
    }

   private:
    Values& values_;
    std::vector<std::string>& calls_;
  };
};

}  // namespace brantel
