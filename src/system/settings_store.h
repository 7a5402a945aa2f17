#pragma once

#include <cstdint>
#include <memory>
#include <optional>
#include <string>
#include <string_view>

namespace brantel {

enum class SettingType {
  kText,    // REG_SZ
  kNumber,  // REG_DWORD
};

// A setting as it stands in the store: for a text its bytes, with or without a NUL at the end, for
// a number its four bytes in little-endian order.
struct StoredSetting {
  SettingType type = SettingType::kText;
  std::string data;
};

// One open key of the machine's settings.
class SettingsKey {
 public:
  virtual ~SettingsKey() = default;

  // Nothing when there is no such value, when it is neither text nor number, or when it is longer
  // than kSettingCapacity.
  virtual std::optional<StoredSetting> Read(const std::string& name) = 0;
  virtual bool Write(const std::string& name, const StoredSetting& setting) = 0;
};

// A setting is read into this many bytes; a longer one counts as missing.
inline constexpr std::size_t kSettingCapacity = 1024;

enum class SettingsAccess { kRead, kWrite };

// The per-machine settings store: the system's registry under HKEY_LOCAL_MACHINE.
class SettingsStore {
 public:
  virtual ~SettingsStore() = default;

  // Opens the key, and creates it when it cannot be opened. Null when that fails too.
  virtual std::unique_ptr<SettingsKey> Open(const std::string& path, SettingsAccess access) = 0;
};

// The key of a settings profile: a class's own key for profile 0, "\07" below it for profile 7.
std::string ProfileKeyPath(const std::string& class_key_path, std::int32_t profile);

// The text of a setting, empty when it is missing. A number gives its lowest byte in decimal, read
// as a signed number: deliberately, since the readers of older versions keep no more of it, and a
// setting must mean the same to both. 300 reads as "44", 200 as "-56".
std::string ReadSetting(SettingsKey& key, const std::string& name);

// Writes a setting as a text without a NUL, or as the number at the start of the text (0 when it
// begins otherwise; out of range, the nearest number that a REG_DWORD holds).
bool WriteSetting(SettingsKey& key, const std::string& name, std::string_view text,
                  SettingType type = SettingType::kText);

}  // namespace brantel
