#include "system/registry_settings_win32.h"

#include <windows.h>

#include <array>

#include "system/windows/registry_key_win32.h"

namespace brantel {
namespace {

class RegistrySettingsKey final : public SettingsKey {
 public:
  explicit RegistrySettingsKey(RegistryHandle key) : key_(std::move(key)) {}

  std::optional<StoredSetting> Read(const std::string& name) override {
    std::array<char, kSettingCapacity> buffer{};
    DWORD type = REG_NONE;
    DWORD size = kSettingCapacity;
    const LSTATUS status = RegQueryValueExA(key_.get(), name.c_str(), nullptr, &type,
                                            reinterpret_cast<BYTE*>(buffer.data()), &size);
    if (status != ERROR_SUCCESS) return std::nullopt;
    if (type != REG_SZ && type != REG_DWORD) return std::nullopt;
    return StoredSetting{type == REG_SZ ? SettingType::kText : SettingType::kNumber,
                         std::string(buffer.data(), size)};
  }

  bool Write(const std::string& name, const StoredSetting& setting) override {
    const DWORD type = setting.type == SettingType::kText ? REG_SZ : REG_DWORD;
    // The system counts a NUL that follows a text into the value; with another byte there the value
    // is as long as the text.
    const std::string guarded = setting.data + '.';
    return RegSetValueExA(key_.get(), name.c_str(), 0, type,
                          reinterpret_cast<const BYTE*>(guarded.data()),
                          static_cast<DWORD>(setting.data.size())) == ERROR_SUCCESS;
  }

 private:
  RegistryHandle key_;
};

}  // namespace

std::unique_ptr<SettingsKey> RegistrySettings::Open(const std::string& path,
                                                    SettingsAccess access) {
  // No more is asked for than is needed: an operator without rights to write can still be alerted
  // by the settings that an administrator made.
  const REGSAM rights = access == SettingsAccess::kRead ? KEY_READ : KEY_READ | KEY_WRITE;
  RegistryHandle key;
  if (RegOpenKeyExA(HKEY_LOCAL_MACHINE, path.c_str(), 0, rights, key.put()) != ERROR_SUCCESS &&
      (missing_key_ == MissingKey::kLeftMissing ||
       RegCreateKeyExA(HKEY_LOCAL_MACHINE, path.c_str(), 0, nullptr, REG_OPTION_NON_VOLATILE,
                       KEY_ALL_ACCESS, nullptr, key.put(), nullptr) != ERROR_SUCCESS)) {
    return nullptr;
  }
  return std::make_unique<RegistrySettingsKey>(std::move(key));
}

}  // namespace brantel
