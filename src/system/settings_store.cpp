#include "system/settings_store.h"

#include "text/leading_number.h"
#include "text/text_end.h"

namespace brantel {
namespace {

std::string DecimalOfLowestByte(const std::string& data) {
  const auto lowest = data.empty() ? std::int8_t{0} : static_cast<std::int8_t>(data.front());
  return std::to_string(int{lowest});
}

std::string NumberBytes(std::int32_t number) {
  std::string bytes;
  for (unsigned shift = 0; shift < 32; shift += 8) {
    bytes.push_back(static_cast<char>(static_cast<std::uint32_t>(number) >> shift));
  }
  return bytes;
}

}  // namespace

std::string ProfileKeyPath(const std::string& class_key_path, std::int32_t profile) {
  if (profile == 0) return class_key_path;
  const std::string digits = std::to_string(profile);
  return class_key_path + "\\" + (digits.size() < 2 ? "0" : "") + digits;
}

std::string ReadSetting(SettingsKey& key, const std::string& name) {
  const std::optional<StoredSetting> setting = key.Read(name);
  if (!setting) return {};
  if (setting->type == SettingType::kNumber) return DecimalOfLowestByte(setting->data);
  return std::string(UpToNul(setting->data));
}

bool WriteSetting(SettingsKey& key, const std::string& name, std::string_view text,
                  SettingType type) {
  if (type == SettingType::kNumber)
    return key.Write(name, {type, NumberBytes(LeadingNumber(text))});
  return key.Write(name, {type, std::string(text)});
}

}  // namespace brantel
