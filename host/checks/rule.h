#pragma once

#include <cstddef>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "description/class_description.h"
#include "host/checks/checked_system.h"
#include "host/checks/finding.h"
#include "host/settings/settings_guide.h"
#include "instance/instance_codec.h"

namespace brantel::host {

// What rules look at: a class, with an instance of it or with the settings of a profile where it is
// about those.
struct Subject {
  const ClassDescription& notifier_class;
  CheckedSystem& system;
  const Instance* instance = nullptr;  // its texts in the code page, as they are stored
  std::span<const ProfileSetting> settings{};

  // Of the instance or the settings, in UTF-8.
  [[nodiscard]] std::string FieldText(std::size_t field) const;
  [[nodiscard]] std::string SettingText(std::size_t setting) const;
};

// One value of the subject, a number as its digits.
struct CheckedValue {
  const Subject& subject;
  std::size_t place;  // the field's or setting's
  std::string text;   // in UTF-8
  std::string bytes;  // as it is stored
};

enum class About { kClass, kField, kSetting };

// Whether a rule stays within this computer's memory, files and registry, or tries a device or the
// network.
enum class Reach { kOffline, kOnline };

inline constexpr std::size_t kEveryPlace = static_cast<std::size_t>(-1);

struct Rule {
  std::string_view name;
  const ClassDescription* notifier_class;  // null: every class
  About about;
  std::size_t place;  // which field or setting; kEveryPlace: each text
  Severity severity;
  // Null: a value that is missing breaks the rule. Other rules are not asked about such a value.
  bool (*is_broken)(const CheckedValue& value);
  std::string_view complaint;  // what is wrong with the value, behind its name
  std::string_view remedy;     // what to do about it
  Reach reach = Reach::kOffline;
};

// All there are, in the order in which they are looked at.
std::span<const Rule> Rules();

// What of a subject is looked at, and how far.
struct Scope {
  bool has_class = false;
  bool has_fields = false;
  bool has_settings = false;
  Reach reach = Reach::kOffline;
};

// The rules that the subject breaks. What has failed already is not tried online.
std::vector<Finding> BrokenRules(const Subject& subject, const Scope& scope);

}  // namespace brantel::host
