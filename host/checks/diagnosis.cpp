#include "host/checks/diagnosis.h"

#include <algorithm>
#include <cstddef>
#include <optional>
#include <utility>

#include "host/settings/line_setup.h"
#include "host/text/control_characters.h"
#include "module/class_descriptions.h"

namespace brantel::host {
namespace {

constexpr std::size_t kSeverityWidth = 9;

// What is wrong with the file as a whole.
std::optional<Finding> FindFault(const InstanceFile& file) {
  if (file.fault.empty()) return std::nullopt;
  Finding finding{.rule = "file", .complaint = file.fault};
  if (file.instance) {
    finding.severity = Severity::kWarning;
    finding.remedy = "write it anew by notifyhost new --force";
  } else if (file.layout == nullptr && file.fault == "is no instance") {
    finding.severity = Severity::kWarning;
    finding.remedy = "keep nothing but instances in their directory";
  } else {
    finding.severity = Severity::kFailure;
    finding.remedy = "see who writes it or may read it, and write it anew if need be";
  }
  return finding;
}

Colour ColourOf(Severity severity) {
  switch (severity) {
    case Severity::kOk:
      return Colour::kGreen;
    case Severity::kWarning:
      return Colour::kYellow;
    case Severity::kFailure:
      break;
  }
  return Colour::kRed;
}

std::string Heading(const ReportWriter& report, const Diagnosis& diagnosis) {
  const std::string severity(SeverityName(diagnosis.severity()));
  std::string heading = report.Painted(ColourOf(diagnosis.severity()), severity);
  heading.append(kSeverityWidth - severity.size(), ' ');
  heading += ShowControlCharacters(diagnosis.name);
  if (!diagnosis.class_name.empty()) heading += " (" + diagnosis.class_name + ")";
  return heading;
}

Record RecordOf(const Finding& finding) {
  return {{"severity", SeverityName(finding.severity)},
          {"rule", finding.rule},
          {"subject", finding.subject},
          {"value", finding.value},
          {"complaint", finding.complaint},
          {"remedy", finding.remedy}};
}

Record RecordOf(const Diagnosis& diagnosis) {
  Record record;
  record["kind"] = diagnosis.kind;
  record["name"] = diagnosis.name;
  if (diagnosis.kind == "instance") record["class"] = diagnosis.class_name;
  record["state"] = SeverityName(diagnosis.severity());
  Value::List findings;
  for (const Finding& finding : diagnosis.findings)
    findings.push_back(RecordOf(finding));
  record["findings"] = std::move(findings);
  return record;
}

}  // namespace

Severity WorstOf(const std::vector<Finding>& findings) {
  Severity worst = Severity::kOk;
  for (const Finding& finding : findings)
    worst = std::max(worst, finding.severity);
  return worst;
}

Severity Diagnosis::severity() const {
  return WorstOf(findings);
}

Diagnosis DiagnoseClass(const ClassDescription& notifier_class, CheckedSystem& system,
                        Reach reach) {
  const auto settings = notifier_class.profile_field
                            ? std::vector<ProfileSetting>()
                            : ReadProfile(system.settings(), notifier_class, 0);
  const Subject subject{notifier_class, system, nullptr, settings};
  const Scope scope{.has_class = true, .has_settings = true, .reach = reach};
  return {"class", std::string(notifier_class.instances.class_name), "",
          BrokenRules(subject, scope)};
}

Diagnosis DiagnoseInstance(const InstanceFile& file, CheckedSystem& system, Reach reach) {
  Diagnosis diagnosis{"instance", file.name, "", {}};
  if (auto fault = FindFault(file)) diagnosis.findings.push_back(std::move(*fault));
  if (file.layout != nullptr) diagnosis.class_name = file.layout->class_name;
  if (!file.stored) return diagnosis;

  const ClassDescription& notifier_class = *FindClassDescription(diagnosis.class_name);
  const auto settings = ReadProfileOf(system.settings(), notifier_class, *file.stored);
  const Subject subject{notifier_class, system, &*file.stored, settings};
  const Scope scope{.has_fields = true, .has_settings = true, .reach = reach};
  for (Finding& finding : BrokenRules(subject, scope))
    diagnosis.findings.push_back(std::move(finding));
  return diagnosis;
}

std::vector<Finding> CheckValues(const ClassDescription& notifier_class, const Instance& stored,
                                 CheckedSystem& system) {
  return BrokenRules({notifier_class, system, &stored, {}}, {.has_fields = true});
}

std::string FindingText(const Finding& finding) {
  std::string text = finding.subject;
  if (!finding.value.empty()) text += " '" + ShowControlCharacters(finding.value) + "'";
  if (!text.empty()) text += ' ';
  return text + finding.complaint + "; " + finding.remedy;
}

void WriteDiagnosis(const ReportWriter& report, const Diagnosis& diagnosis) {
  std::string words = Heading(report, diagnosis);
  std::string_view before = ": ";
  const std::string indent = "\n" + std::string(kSeverityWidth + 2, ' ');
  for (const Finding& finding : diagnosis.findings) {
    words.append(before).append(FindingText(finding));
    before = indent;
  }
  report.Entry(words + "\n", RecordOf(diagnosis));
}

}  // namespace brantel::host
