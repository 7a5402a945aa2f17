#include "host/commands/ports_command.h"

#include <windows.h>

#include <algorithm>
#include <array>
#include <optional>
#include <string>
#include <vector>

#include "beeper/beeper_description.h"
#include "description/settings_profile.h"
#include "host/commands/command_context_win32.h"
#include "host/outcome/system_error_text_win32.h"
#include "host/settings/settings_guide.h"
#include "pager/pager_description.h"
#include "port/com_port_number.h"
#include "port/serial_device_win32.h"
#include "system/registry_settings_win32.h"
#include "system/windows/utf8_text_win32.h"

namespace brantel::host {
namespace {

constexpr std::array kPortColumns = {Column{"port", "Port"}, Column{"device", "Device"},
                                     Column{"state", "State"}, Column{"profiles", "Profiles"}};

// What the system has devices under; more than any computer's names take.
constexpr std::size_t kNamesCapacity = 65536;

constexpr std::wstring_view kPortPrefix = L"COM";

// A profile of a class, and the port that it names.
struct PortUser {
  std::uint32_t port;
  std::string profile;
};

// The numbers of the ports, in their order.
std::vector<std::uint32_t> PortNumbers() {
  std::wstring names(kNamesCapacity, L'\0');
  names.resize(QueryDosDeviceW(nullptr, names.data(), kNamesCapacity));
  std::vector<std::uint32_t> numbers;
  for (std::size_t at = 0; at < names.size();) {
    const std::wstring name = names.c_str() + at;
    at += name.size() + 1;
    const std::wstring digits = name.substr(std::min(kPortPrefix.size(), name.size()));
    const bool is_port = name.starts_with(kPortPrefix) && !digits.empty() &&
                         digits.find_first_not_of(L"0123456789") == std::wstring::npos;
    if (is_port) numbers.push_back(ComPortNumber(ToUtf8(name)).value_or(0));
  }
  std::ranges::sort(numbers);
  return numbers;
}

std::string DeviceOf(std::uint32_t port) {
  std::wstring target(kNamesCapacity, L'\0');
  const std::wstring name = L"COM" + std::to_wstring(port);
  if (QueryDosDeviceW(name.c_str(), target.data(), kNamesCapacity) == 0) return "";
  return ToUtf8(target.c_str());
}

// Ports are opened by one program at a time, so one that opens is free.
std::string StateOf(std::uint32_t port) {
  const auto opened = system_serial_ports.Open(port);
  if (opened) return "free";
  if (opened.reason() == ERROR_ACCESS_DENIED || opened.reason() == ERROR_SHARING_VIOLATION)
    return "held by another program";
  return "cannot be opened: " + SystemErrorText(opened.reason());
}

void AddUser(std::vector<PortUser>& users, const ClassDescription& notifier_class,
             std::int32_t profile) {
  RegistrySettings store(MissingKey::kLeftMissing);
  const auto settings = ReadProfile(store, notifier_class, profile);
  const bool is_made = std::ranges::any_of(settings, [](const ProfileSetting& setting) {
    return setting.origin != SettingOrigin::kDefault;
  });
  if (profile != kFirstSettingsProfile && !is_made) return;
  const std::string& port = settings.front().text;
  users.push_back({ComPortNumber(port).value_or(0), std::string(notifier_class.instances.class_name)
                                                        .append(" ")
                                                        .append(std::to_string(profile))});
}

// Profile 0 of each class with a modem, which counts also where nothing is stored, and the others
// that somebody has made.
std::vector<PortUser> PortUsers() {
  std::vector<PortUser> users;
  for (const ClassDescription* notifier_class : {&kBeeper, &kPager}) {
    for (std::int32_t profile = kFirstSettingsProfile; profile <= kLastSettingsProfile; ++profile)
      AddUser(users, *notifier_class, profile);
  }
  return users;
}

Record RecordOf(std::uint32_t port, const std::vector<PortUser>& users, bool is_there) {
  std::string profiles;
  for (const PortUser& user : users) {
    if (user.port == port) profiles += (profiles.empty() ? "" : ", ") + user.profile;
  }
  Record record{{"port", "COM" + std::to_string(port)}, {"there", is_there}, {"device", nullptr}};
  if (is_there) record["device"] = DeviceOf(port);
  record["state"] = is_there ? StateOf(port) : "not there";
  record["profiles"] = profiles;
  return record;
}

}  // namespace

ExitCode Run(const PortsCommand&, const CommandContext& context) {
  const auto users = PortUsers();
  const auto numbers = PortNumbers();
  std::vector<Record> records;
  records.reserve(numbers.size());
  for (const std::uint32_t port : numbers)
    records.push_back(RecordOf(port, users, true));
  std::vector<std::uint32_t> missing;
  for (const PortUser& user : users) {
    const bool is_known = std::ranges::find(numbers, user.port) != numbers.end() ||
                          std::ranges::find(missing, user.port) != missing.end();
    if (is_known) continue;
    missing.push_back(user.port);
    records.push_back(RecordOf(user.port, users, false));
  }
  context.report.Table(kPortColumns, records);
  return numbers.empty() ? ExitCode::kNothingMatched : ExitCode::kDone;
}

}  // namespace brantel::host
