#pragma once

#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "host/instances/class_fields.h"
#include "host/settings/settings_guide.h"

namespace brantel::host {

// The class of this name, in any letter case, which has settings. Throws CommandFailure for
// another, and for a profile of a class that has none.
const ClassDescription& FindClassWithSettings(const std::string& class_name, int profile);

// The setting of this name, in any letter case and with "Settings_" or without. Throws
// CommandFailure with the names to choose from when the class has none such.
const SettingGuide& FindSetting(const ClassDescription& notifier_class, const std::string& name);

// A setting and what it is to hold, in the system's code page.
struct SettingChange {
  const SettingGuide* guide;
  std::string text;
};

// What these assignments ask for. Throws CommandFailure for a name that is no setting's or given
// twice, and for a text that `encode` cannot take or that the class would not read.
std::vector<SettingChange> SettingChanges(const ClassDescription& notifier_class,
                                          std::span<const FieldValue> values,
                                          CodePageEncoder encode);

// The profile as it will be.
std::vector<ProfileSetting> Changed(std::vector<ProfileSetting> settings,
                                    std::span<const SettingChange> changes);

// What export prints of a profile: the settings that are stored in it, as JSON.
std::string ExportText(const ClassDescription& notifier_class,
                       std::span<const ProfileSetting> settings,
                       std::string (*decode)(std::string_view));

// Reads what export has printed. Throws CommandFailure when it is of another form, or of another
// class.
std::vector<FieldValue> ReadExport(const ClassDescription& notifier_class, std::string_view text);

}  // namespace brantel::host
