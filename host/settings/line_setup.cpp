#include "host/settings/line_setup.h"

#include <cstddef>

#include "beeper/beeper_description.h"
#include "pager/pager_description.h"
#include "port/com_port_number.h"
#include "text/leading_number.h"

namespace brantel::host {
namespace {

// Of a rate below 300 each class makes one of its own.
std::uint32_t RateOf(const ClassDescription& notifier_class, std::int32_t selector) {
  const auto rates = UsualRates();
  const bool is_index = selector >= 0 && static_cast<std::size_t>(selector) < rates.size();
  if (is_index) return static_cast<std::uint32_t>(rates[static_cast<std::size_t>(selector)]);
  if (selector >= rates.front()) return static_cast<std::uint32_t>(selector);
  return &notifier_class == &kBeeper ? 1200 : 300;
}

}  // namespace

LineSetup SetupOfLine(const ClassDescription& notifier_class,
                      std::span<const ProfileSetting> settings) {
  LineSetup setup;
  for (const ProfileSetting& setting : settings) {
    if (setting.guide->name == "Settings_COMPort")
      setup.port = ComPortNumber(setting.text).value_or(0);
    if (setting.guide->name == "Settings_Baud")
      setup.bits_per_second = RateOf(notifier_class, LeadingNumber(setting.text));
    if (setting.guide->name == "Settings_8N1") setup.is_8n1 = setting.text == kFramed8N1;
  }
  return setup;
}

std::vector<ProfileSetting> ReadProfileOf(SettingsStore& store,
                                          const ClassDescription& notifier_class,
                                          const Instance& instance) {
  if (!notifier_class.profile_field) return {};
  return ReadProfile(store, notifier_class, instance.integer(*notifier_class.profile_field));
}

}  // namespace brantel::host
