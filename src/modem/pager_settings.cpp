#include "modem/pager_settings.h"

#include "framework/string_table.h"

namespace brantel {

std::vector<std::string> ReadPagerSettings(SettingsStore& store, std::int32_t profile) {
  return ReadSettings(store, LoadText(text_id::kPagerSettingsKey), profile, kPagerSettings);
}

bool WritePagerSettings(SettingsStore& store, std::int32_t profile,
                        std::span<const std::string> settings) {
  return WriteSettings(store, LoadText(text_id::kPagerSettingsKey), profile, kPagerSettings,
                       settings);
}

}  // namespace brantel
