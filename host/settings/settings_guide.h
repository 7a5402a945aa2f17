#pragma once

#include <cstdint>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "description/class_description.h"
#include "system/settings_store.h"

namespace brantel::host {

// One setting of a class's port and modem, or of its session.
struct SettingGuide {
  const ClassDescription* notifier_class;
  std::string_view name;
  std::string_view default_text;
  std::string_view values;  // what it may hold
  std::string_view meaning;
};

// Those of the class, in the order in which it reads them; none where it has none.
std::span<const SettingGuide> SettingsOf(const ClassDescription& notifier_class);

// Where the settings of a profile are kept, below HKEY_LOCAL_MACHINE.
std::string SettingsPath(const ClassDescription& notifier_class, std::int32_t profile);

// The usual rates of ports, which settings also name by their places.
std::span<const std::int32_t> UsualRates();

enum class SettingOrigin {
  kDefault,  // it is missing or empty
  kText,
  kNumber,  // a REG_DWORD, of which the class takes the lowest byte alone
};

// A setting as its class reads it. The text is in the system's code page.
struct ProfileSetting {
  const SettingGuide* guide;
  std::string text;
  SettingOrigin origin;
};

// The settings of a profile, in the order of SettingsOf.
std::vector<ProfileSetting> ReadProfile(SettingsStore& store,
                                        const ClassDescription& notifier_class,
                                        std::int32_t profile);

}  // namespace brantel::host
