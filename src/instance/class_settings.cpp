#include "instance/class_settings.h"

#include "text/string_table.h"

namespace brantel {
namespace {

std::unique_ptr<SettingsKey> OpenKey(SettingsStore& store, const SettingsDescription& settings,
                                     std::int32_t profile, SettingsAccess access) {
  return store.Open(ProfileKeyPath(LoadText(settings.key_text_id), profile), access);
}

}  // namespace

std::vector<std::string> ReadSettings(SettingsStore& store, const SettingsDescription& settings,
                                      std::int32_t profile) {
  const auto key = OpenKey(store, settings, profile, SettingsAccess::kRead);
  std::vector<std::string> texts;
  texts.reserve(settings.rows.size());
  for (const SettingRow& row : settings.rows) {
    std::string& text = texts.emplace_back();
    if (key) text = ReadSetting(*key, std::string(row.name));
    if (text.empty()) text = row.default_text;
  }
  return texts;
}

bool WriteSettings(SettingsStore& store, const SettingsDescription& settings, std::int32_t profile,
                   std::span<const std::string> texts) {
  const auto key = OpenKey(store, settings, profile, SettingsAccess::kWrite);
  if (!key) return false;
  bool all_written = true;
  for (const SettingRow& row : settings.rows) {
    all_written = WriteSetting(*key, std::string(row.name), texts[row.index]) && all_written;
  }
  return all_written;
}

}  // namespace brantel
