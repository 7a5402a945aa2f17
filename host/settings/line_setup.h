#pragma once

#include <cstdint>
#include <optional>
#include <span>

#include "description/class_description.h"
#include "host/settings/settings_guide.h"
#include "instance/instance_codec.h"

namespace brantel::host {

// How a port and its line are set up.
struct LineSetup {
  std::uint32_t port = 0;
  std::uint32_t bits_per_second = 0;
  bool is_8n1 = true;

  friend bool operator==(const LineSetup&, const LineSetup&) = default;
};

// As these settings of a class with a port say.
LineSetup SetupOfLine(const ClassDescription& notifier_class,
                      std::span<const ProfileSetting> settings);

// The settings of the profile that the instance goes by. None where its class has no profiles.
std::vector<ProfileSetting> ReadProfileOf(SettingsStore& store,
                                          const ClassDescription& notifier_class,
                                          const Instance& instance);

}  // namespace brantel::host
