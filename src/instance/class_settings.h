#pragma once

#include <cstdint>
#include <span>
#include <string>
#include <vector>

#include "description/class_description.h"
#include "system/settings_store.h"

namespace brantel {

// Reads the settings of a class's profile, in their order, and puts the defaults where a setting
// came back empty. When the key cannot be opened all are defaults.
std::vector<std::string> ReadSettings(SettingsStore& store, const SettingsDescription& settings,
                                      std::int32_t profile);

// Writes the settings of a profile as texts, in their order. False when the key cannot be opened or
// a setting cannot be written.
bool WriteSettings(SettingsStore& store, const SettingsDescription& settings, std::int32_t profile,
                   std::span<const std::string> texts);

}  // namespace brantel
