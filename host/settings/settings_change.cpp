#include "host/settings/settings_change.h"

#include <algorithm>
#include <utility>

#include "host/outcome/command_failure.h"
#include "host/report/json_text.h"
#include "host/text/letter_case.h"
#include "host/text/name_list.h"
#include "host/text/nearest_name.h"
#include "module/class_descriptions.h"

namespace brantel::host {
namespace {

constexpr std::string_view kPrefix = "Settings_";

// A longer one counts as missing.
constexpr std::size_t kLongestSetting = kSettingCapacity - 1;

[[noreturn]] void ThrowWrong(const std::string& fault) {
  throw CommandFailure(ExitCode::kWrongUsage, fault);
}

std::string_view WithoutPrefix(std::string_view name) {
  const bool has_prefix = EqualIgnoringCase(name.substr(0, kPrefix.size()), kPrefix);
  return has_prefix ? name.substr(kPrefix.size()) : name;
}

std::string NamesOfClassesWithSettings() {
  std::vector<std::string_view> names;
  for (const ClassDescription* notifier_class : ClassDescriptions()) {
    if (!SettingsOf(*notifier_class).empty()) names.push_back(notifier_class->instances.class_name);
  }
  return NamesInProse(names);
}

[[noreturn]] void ThrowNoExport(const std::string& fault) {
  ThrowWrong("FILE: " + fault + "; notifyhost settings export prints files of the right form");
}

}  // namespace

const ClassDescription& FindClassWithSettings(const std::string& class_name, int profile) {
  const ClassDescription& notifier_class = FindDescription(class_name);
  const std::string name(notifier_class.instances.class_name);
  if (SettingsOf(notifier_class).empty()) {
    ThrowWrong("CLASS: " + name + " has no settings; those that have are " +
               NamesOfClassesWithSettings());
  }
  if (profile != 0 && !notifier_class.profile_field)
    ThrowWrong("--profile: " + name + " has no profiles");
  return notifier_class;
}

const SettingGuide& FindSetting(const ClassDescription& notifier_class, const std::string& name) {
  const auto settings = SettingsOf(notifier_class);
  const auto found = std::ranges::find_if(settings, [&](const SettingGuide& setting) {
    return EqualIgnoringCase(WithoutPrefix(setting.name), WithoutPrefix(name));
  });
  if (found != settings.end()) return *found;
  const auto names = NamesOf(settings, &SettingGuide::name);
  ThrowWrong(UnknownName(name, "a setting of " + std::string(notifier_class.instances.class_name),
                         "settings", ViewsOf(names)));
}

std::vector<SettingChange> SettingChanges(const ClassDescription& notifier_class,
                                          std::span<const FieldValue> values,
                                          CodePageEncoder encode) {
  std::vector<SettingChange> changes;
  for (const FieldValue& value : values) {
    const SettingGuide& setting = FindSetting(notifier_class, value.field);
    const std::string name(setting.name);
    if (std::ranges::find(changes, &setting, &SettingChange::guide) != changes.end())
      ThrowWrong(name + " is given more than once");
    auto text = encode(value.value);
    if (!text) ThrowWrong(name + ": the text has characters that the system's code page lacks");
    if (text->size() > kLongestSetting || text->find('\0') != std::string::npos) {
      ThrowWrong(name + ": the text is longer than " + std::to_string(kLongestSetting) +
                 " bytes, or has a NUL, so that it could not be read");
    }
    changes.push_back({&setting, std::move(*text)});
  }
  return changes;
}

std::vector<ProfileSetting> Changed(std::vector<ProfileSetting> settings,
                                    std::span<const SettingChange> changes) {
  for (ProfileSetting& setting : settings) {
    for (const SettingChange& change : changes) {
      if (change.guide != setting.guide) continue;
      const bool is_default = change.text.empty();
      setting.text = is_default ? std::string(setting.guide->default_text) : change.text;
      setting.origin = is_default ? SettingOrigin::kDefault : SettingOrigin::kText;
    }
  }
  return settings;
}

std::string ExportText(const ClassDescription& notifier_class,
                       std::span<const ProfileSetting> settings,
                       std::string (*decode)(std::string_view)) {
  Record stored;
  for (const ProfileSetting& setting : settings) {
    if (setting.origin != SettingOrigin::kDefault)
      stored[setting.guide->name] = decode(setting.text);
  }
  const Record record{{"class", notifier_class.instances.class_name}, {"settings", stored}};
  return JsonText(record) + "\n";
}

std::vector<FieldValue> ReadExport(const ClassDescription& notifier_class, std::string_view text) {
  const auto json = ParseJson(text);
  const Record* const record = json ? json->Get<Record>() : nullptr;
  if (record == nullptr) ThrowNoExport("is no JSON object");
  const auto* const class_name = record->Get<std::string>("class");
  if (class_name == nullptr || *class_name != notifier_class.instances.class_name)
    ThrowNoExport("is not of " + std::string(notifier_class.instances.class_name));
  const auto* const settings = record->Get<Record>("settings");
  if (settings == nullptr) ThrowNoExport("has no settings");
  std::vector<FieldValue> values;
  for (const Member& setting : settings->members()) {
    const auto* const value = setting.value.Get<std::string>();
    if (value == nullptr) ThrowNoExport("has something else than a text for " + setting.name);
    values.push_back({setting.name, *value});
  }
  return values;
}

}  // namespace brantel::host
