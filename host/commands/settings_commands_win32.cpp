#include <windows.h>

#include <algorithm>
#include <array>
#include <string>
#include <vector>

#include "host/checks/diagnosis.h"
#include "host/commands/command_context_win32.h"
#include "host/commands/settings_commands.h"
#include "host/machine/system_machine_win32.h"
#include "host/settings/settings_change.h"
#include "host/system/code_page_text_win32.h"
#include "host/system/file_path_win32.h"
#include "system/registry_settings_win32.h"
#include "system/windows/registry_key_win32.h"
#include "system/windows/utf8_text_win32.h"

namespace brantel::host {
namespace {

constexpr std::array kSettingColumns = {Column{"setting", "Setting"}, Column{"value", "Value"},
                                        Column{"origin", "From"}, Column{"values", "Values"},
                                        Column{"meaning", "Meaning"}};

// Far more than export prints.
constexpr std::size_t kLargestImport = 1U << 20U;

// The profile that a command is about.
class Profile {
 public:
  explicit Profile(const SettingsPlace& place)
      : class_(FindClassWithSettings(place.class_name, place.profile)), number_(place.profile) {}

  [[nodiscard]] const ClassDescription& notifier_class() const { return class_; }
  [[nodiscard]] std::string path() const { return SettingsPath(class_, number_); }
  [[nodiscard]] std::string name() const {
    return std::string(class_.instances.class_name) +
           (class_.profile_field ? ", profile " + std::to_string(number_) : "");
  }

  [[nodiscard]] std::vector<ProfileSetting> Read() const {
    RegistrySettings store(MissingKey::kLeftMissing);
    return ReadProfile(store, class_, number_);
  }

  void Store(std::span<const SettingChange> changes) const {
    RegistrySettings store;
    const auto key = store.Open(path(), SettingsAccess::kWrite);
    const bool is_stored =
        key && std::ranges::all_of(changes, [&](const SettingChange& change) {
          return WriteSetting(*key, std::string(change.guide->name), change.text);
        });
    if (!is_stored) {
      throw CommandFailure(ExitCode::kFailed, R"(HKEY_LOCAL_MACHINE\)" + path() +
                                                  " cannot be written; run as an administrator");
    }
  }

  // Whether it was stored.
  [[nodiscard]] bool TakeOut(const SettingGuide& setting) const {
    RegistryHandle key;
    return RegOpenKeyExA(HKEY_LOCAL_MACHINE, path().c_str(), 0, KEY_SET_VALUE, key.put()) ==
               ERROR_SUCCESS &&
           RegDeleteValueA(key.get(), std::string(setting.name).c_str()) == ERROR_SUCCESS;
  }

 private:
  const ClassDescription& class_;
  int number_;
};

const char* OriginText(SettingOrigin origin) {
  switch (origin) {
    case SettingOrigin::kDefault:
      return "default";
    case SettingOrigin::kText:
      return "registry";
    case SettingOrigin::kNumber:
      break;
  }
  return "registry, a number";
}

Record RecordOf(const ProfileSetting& setting) {
  return {{"setting", setting.guide->name},       {"value", FromCodePage(setting.text)},
          {"origin", OriginText(setting.origin)}, {"default", setting.guide->default_text},
          {"values", setting.guide->values},      {"meaning", setting.guide->meaning}};
}

// Throws CommandFailure, as of invalid values, when a setting that is changed would fail.
void Check(const Profile& profile, std::span<const SettingChange> changes,
           const CommandContext& context) {
  SystemMachine machine(context.module_file);
  const auto settings = Changed(profile.Read(), changes);
  std::string failures;
  for (const Finding& finding : BrokenRules({profile.notifier_class(), machine, nullptr, settings},
                                            {.has_settings = true})) {
    const bool is_changed = std::ranges::any_of(changes, [&](const SettingChange& change) {
      return change.guide->name == finding.subject;
    });
    if (!is_changed) continue;
    if (finding.severity == Severity::kFailure) {
      failures += FindingText(finding) + "\n";
    } else {
      context.errors.Write("notifyhost: warning: " + FindingText(finding) + "\n");
    }
  }
  if (failures.empty()) return;
  throw CommandFailure(ExitCode::kWrongUsage,
                       failures + "Nothing is stored; --no-check stores it all the same");
}

ExitCode StoreChecked(const Profile& profile, std::span<const FieldValue> values, bool is_unchecked,
                      const CommandContext& context) {
  const auto changes = SettingChanges(profile.notifier_class(), values, ToCodePage);
  if (!is_unchecked) Check(profile, changes, context);
  profile.Store(changes);
  std::vector<std::string> names;
  names.reserve(changes.size());
  for (const SettingChange& change : changes)
    names.emplace_back(change.guide->name);
  context.report.Entry(
      "Stored " + std::to_string(changes.size()) + " settings of " + profile.name() + ".\n",
      {{"class", profile.notifier_class().instances.class_name}, {"stored", names}});
  return ExitCode::kDone;
}

}  // namespace

ExitCode Run(const SettingsListCommand& command, const CommandContext& context) {
  const Profile profile(command.place);
  std::vector<Record> records;
  for (const ProfileSetting& setting : profile.Read())
    records.push_back(RecordOf(setting));
  context.report.Prose("Settings of " + profile.name() + "\nin HKEY_LOCAL_MACHINE\\" +
                       profile.path() + "\n\n");
  context.report.Table(kSettingColumns, records);
  return ExitCode::kDone;
}

ExitCode Run(const SettingsGetCommand& command, const CommandContext& context) {
  const Profile profile(command.place);
  const SettingGuide& guide = FindSetting(profile.notifier_class(), command.name);
  for (const ProfileSetting& setting : profile.Read()) {
    if (setting.guide == &guide)
      context.report.Entry(FromCodePage(setting.text) + "\n", RecordOf(setting));
  }
  return ExitCode::kDone;
}

ExitCode Run(const SettingsSetCommand& command, const CommandContext& context) {
  if (command.values.empty()) throw CommandFailure(ExitCode::kWrongUsage, "SETTINGS is missing");
  return StoreChecked(Profile(command.place), command.values, command.is_unchecked, context);
}

ExitCode Run(const SettingsResetCommand& command, const CommandContext& context) {
  const Profile profile(command.place);
  std::vector<const SettingGuide*> settings;
  for (const std::string& name : command.names)
    settings.push_back(&FindSetting(profile.notifier_class(), name));
  if (settings.empty()) {
    for (const SettingGuide& setting : SettingsOf(profile.notifier_class()))
      settings.push_back(&setting);
  }
  std::vector<std::string> names;
  for (const SettingGuide* setting : settings) {
    if (profile.TakeOut(*setting)) names.emplace_back(setting->name);
  }
  context.report.Entry(
      "Took " + std::to_string(names.size()) + " settings of " + profile.name() + " out.\n",
      {{"class", profile.notifier_class().instances.class_name}, {"taken_out", names}});
  return names.empty() ? ExitCode::kNothingMatched : ExitCode::kDone;
}

ExitCode Run(const SettingsExportCommand& command, const CommandContext& context) {
  const Profile profile(command.place);
  context.output.Write(ExportText(profile.notifier_class(), profile.Read(), FromCodePage));
  return ExitCode::kDone;
}

ExitCode Run(const SettingsImportCommand& command, const CommandContext& context) {
  const Profile profile(command.place);
  const std::wstring path = FullPath(FromUtf8(command.file));
  if (!FileExists(path) || IsDirectory(path)) {
    throw CommandFailure(ExitCode::kFailed, "there is no file " + ToUtf8(path));
  }
  const auto values = ReadExport(profile.notifier_class(), FileStart(path, kLargestImport));
  return StoreChecked(profile, values, command.is_unchecked, context);
}

}  // namespace brantel::host
