#include "modem/beeper_settings.h"

#include "framework/string_table.h"

namespace brantel {

std::vector<std::string> ReadBeeperSettings(SettingsStore& store, std::int32_t profile) {
  return ReadSettings(store, LoadText(text_id::kBeeperSettingsKey), profile, kBeeperSettings);
}

bool WriteBeeperSettings(SettingsStore& store, std::int32_t profile,
                         std::span<const std::string> settings) {
  return WriteSettings(store, LoadText(text_id::kBeeperSettingsKey), profile, kBeeperSettings,
                       settings);
}

}  // namespace brantel
