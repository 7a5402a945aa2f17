#include "host/settings/settings_guide.h"

#include <algorithm>
#include <array>

#include "beeper/beeper_description.h"
#include "pager/pager_description.h"
#include "smtp_mail/smtp_mail_description.h"

namespace brantel::host {
namespace {

constexpr std::string_view kPortValues = "COM and the number of a serial port";
constexpr std::string_view kRateValues = "bits per second, or 0 to 9 for 300 to 115200";
constexpr std::string_view kRateMeaning = "the rate of the port";

// Side by side by their classes.
constexpr std::array kSettings = {
    SettingGuide{&kSMTPMail, "Settings_Timeout", "10000", "milliseconds, at least 100",
                 "how long each answer of the relay is waited for"},
    SettingGuide{&kBeeper, "Settings_COMPort", "COM1", kPortValues, "the port of the modem"},
    SettingGuide{&kBeeper, "Settings_Baud", "300", kRateValues, kRateMeaning},
    SettingGuide{&kBeeper, "Settings_DialString", "ATDT%s,,,,%s#", "AT command with %s twice",
                 "how the modem dials: the number, then the message"},
    SettingGuide{&kBeeper, "Settings_ModemString", "ATE0Q0V1X4", "AT command",
                 "how the modem is set up"},
    SettingGuide{&kBeeper, "Settings_Timeout", "5", "milliseconds",
                 "how long the line is held after dialling"},
    SettingGuide{&kPager, "Settings_COMPort", "COM1", kPortValues, "the port of the modem"},
    SettingGuide{&kPager, "Settings_Baud", "300", kRateValues, kRateMeaning},
    SettingGuide{&kPager, "Settings_ModemString", "ATE0Q0V1X4",
                 "AT command that turns the echo off", "how the modem is set up"},
    SettingGuide{&kPager, "Settings_8N1", "0", "1: 8 data bits, 0: 7 and even parity",
                 "the bits of a byte on the line"},
};

constexpr std::array<std::int32_t, 10> kUsualRates = {300,   1200,  2400,  4800,  9600,
                                                      14400, 19200, 38400, 57600, 115200};

ProfileSetting ReadOne(SettingsKey* key, const SettingGuide& guide) {
  const std::string name(guide.name);
  std::string text = key != nullptr ? ReadSetting(*key, name) : "";
  if (key == nullptr || text.empty())
    return {&guide, std::string(guide.default_text), SettingOrigin::kDefault};
  const bool is_number = key->Read(name).value_or(StoredSetting()).type == SettingType::kNumber;
  return {&guide, std::move(text), is_number ? SettingOrigin::kNumber : SettingOrigin::kText};
}

}  // namespace

std::span<const SettingGuide> SettingsOf(const ClassDescription& notifier_class) {
  const auto is_of_class = [&](const SettingGuide& guide) {
    return guide.notifier_class == &notifier_class;
  };
  const auto* const first = std::ranges::find_if(kSettings, is_of_class);
  return {first, std::find_if_not(first, kSettings.end(), is_of_class)};
}

std::span<const std::int32_t> UsualRates() {
  return kUsualRates;
}

std::string SettingsPath(const ClassDescription& notifier_class, std::int32_t profile) {
  std::string path = R"(SOFTWARE\Brantel\Vantrel\notification\)";
  path += notifier_class.instances.class_name;
  return ProfileKeyPath(path, profile);
}

std::vector<ProfileSetting> ReadProfile(SettingsStore& store,
                                        const ClassDescription& notifier_class,
                                        std::int32_t profile) {
  const auto key = store.Open(SettingsPath(notifier_class, profile), SettingsAccess::kRead);
  std::vector<ProfileSetting> settings;
  for (const SettingGuide& guide : SettingsOf(notifier_class))
    settings.push_back(ReadOne(key.get(), guide));
  return settings;
}

}  // namespace brantel::host
