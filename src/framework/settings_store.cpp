#include "framework/settings_store.h"

#include "framework/leading_number.h"
#include "framework/text_end.h"

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

std::vector<std::string> ReadSettings(SettingsStore& store, const std::string& class_key_path,
                                      std::int32_t profile, std::span<const SettingRow> rows) {
  const auto key = store.Open(ProfileKeyPath(class_key_path, profile), SettingsAccess::kRead);
  std::vector<std::string> texts;
  texts.reserve(rows.size());
  for (const SettingRow& row : rows) {
    std::string& text = texts.emplace_back();
    if (key) text = ReadSetting(*key, std::string(row.name));
    if (text.empty()) text = row.default_text;
  }
  return texts;
}

bool WriteSettings(SettingsStore& store, const std::string& class_key_path, std::int32_t profile,
                   std::span<const SettingRow> rows, std::span<const std::string> texts) {
  const auto key = store.Open(ProfileKeyPath(class_key_path, profile), SettingsAccess::kWrite);
  if (!key) return false;
  bool all_written = true;
  for (std::size_t i = 0; i < rows.size(); ++i) {
    all_written = WriteSetting(*key, std::string(rows[i].name), texts[i]) && all_written;
  }
  return all_written;
}

}  // namespace brantel
