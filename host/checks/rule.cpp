#include "host/checks/rule.h"

#include <algorithm>
#include <utility>

#include "host/instances/field_guide.h"
#include "host/text/utf8_characters.h"

namespace brantel::host {
namespace {

bool IsInScope(About about, const Scope& scope) {
  switch (about) {
    case About::kClass:
      return scope.has_class;
    case About::kField:
      return scope.has_fields;
    case About::kSetting:
      return scope.has_settings;
  }
  return false;
}

bool IsText(const Subject& subject, About about, std::size_t place) {
  return about == About::kSetting ||
         subject.notifier_class.instances.fields[place].kind == FieldKind::kText;
}

std::size_t PlaceCount(const Subject& subject, About about) {
  switch (about) {
    case About::kClass:
      return 1;
    case About::kField:
      return subject.notifier_class.instances.fields.size();
    case About::kSetting:
      return subject.settings.size();
  }
  return 0;
}

std::string NameOf(const Subject& subject, About about, std::size_t place) {
  switch (about) {
    case About::kClass:
      return {};
    case About::kField:
      return std::string(subject.notifier_class.instances.fields[place].name);
    case About::kSetting:
      return std::string(subject.settings[place].guide->name);
  }
  return {};
}

CheckedValue ValueAt(const Subject& subject, About about, std::size_t place) {
  switch (about) {
    case About::kClass: {
      const std::string name(subject.notifier_class.instances.class_name);
      return {subject, place, name, name};
    }
    case About::kField: {
      if (IsText(subject, about, place))
        return {subject, place, subject.FieldText(place), subject.instance->text(place)};
      const std::string number = std::to_string(subject.instance->integer(place));
      return {subject, place, number, number};
    }
    case About::kSetting:
      break;
  }
  return {subject, place, subject.SettingText(place), subject.settings[place].text};
}

// Nothing of a class, whose value is its name, and of a secret. Of a long text, its beginning.
std::string ShownValue(const Subject& subject, About about, std::size_t place) {
  constexpr std::size_t kMostCharacters = 40;
  const bool is_secret =
      about == About::kField && GuideOf(subject.notifier_class, place).secrecy == Secrecy::kSecret;
  if (about == About::kClass || is_secret) return {};
  const std::string text = ValueAt(subject, about, place).text;
  const std::string shown(FirstCharacters(text, kMostCharacters));
  return shown.size() < text.size() ? shown + "..." : shown;
}

bool IsBroken(const Rule& rule, const CheckedValue& value) {
  if (rule.is_broken == nullptr || value.bytes.empty())
    return rule.is_broken == nullptr && value.bytes.empty();
  return rule.is_broken(value);
}

class Checker {
 public:
  Checker(const Subject& subject, const Scope& scope) : subject_(subject), scope_(scope) {}

  std::vector<Finding> Run() {
    for (const Rule& rule : Rules()) {
      if (Concerns(rule)) Check(rule);
    }
    return std::move(findings_);
  }

 private:
  [[nodiscard]] bool Concerns(const Rule& rule) const {
    const bool is_of_class =
        rule.notifier_class == nullptr || rule.notifier_class == &subject_.notifier_class;
    return is_of_class && IsInScope(rule.about, scope_) &&
           (rule.reach == Reach::kOffline || scope_.reach == Reach::kOnline);
  }

  void Check(const Rule& rule) {
    for (std::size_t place = 0; place < PlaceCount(subject_, rule.about); ++place) {
      const bool is_meant =
          rule.place == kEveryPlace ? IsText(subject_, rule.about, place) : place == rule.place;
      if (is_meant) CheckAt(rule, place);
    }
  }

  void CheckAt(const Rule& rule, std::size_t place) {
    const std::string name = NameOf(subject_, rule.about, place);
    if (rule.reach == Reach::kOnline && HasFailed(name)) return;
    if (!IsBroken(rule, ValueAt(subject_, rule.about, place))) return;
    findings_.push_back({rule.severity, std::string(rule.name), name,
                         ShownValue(subject_, rule.about, place), std::string(rule.complaint),
                         std::string(rule.remedy)});
  }

  [[nodiscard]] bool HasFailed(const std::string& name) const {
    return std::ranges::any_of(findings_, [&](const Finding& finding) {
      return finding.subject == name && finding.severity == Severity::kFailure;
    });
  }

  const Subject& subject_;
  const Scope& scope_;
  std::vector<Finding> findings_;
};

}  // namespace

std::string Subject::FieldText(std::size_t field) const {
  return system.FromCodePage(instance->text(field));
}

std::string Subject::SettingText(std::size_t setting) const {
  return system.FromCodePage(settings[setting].text);
}

std::vector<Finding> BrokenRules(const Subject& subject, const Scope& scope) {
  return Checker(subject, scope).Run();
}

}  // namespace brantel::host
