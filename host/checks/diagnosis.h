#pragma once

#include <string>
#include <vector>

#include "host/checks/rule.h"
#include "host/instances/instance_file.h"
#include "host/report/report_writer.h"

namespace brantel::host {

// What was found of one instance, one class, or one item of a watch.
struct Diagnosis {
  std::string kind;          // "instance", "class" or "item"
  std::string name;          // of that
  std::string class_name{};  // of an instance; empty when it is of none
  std::vector<Finding> findings{};

  // The worst of the findings.
  [[nodiscard]] Severity severity() const;
};

// What of a class does not depend on an instance: its registration, what it needs of this computer,
// and its settings where it has no profiles of them.
Diagnosis DiagnoseClass(const ClassDescription& notifier_class, CheckedSystem& system, Reach reach);

// An instance and the settings of its profile.
Diagnosis DiagnoseInstance(const InstanceFile& file, CheckedSystem& system, Reach reach);

// The values of an instance that is to be written.
std::vector<Finding> CheckValues(const ClassDescription& notifier_class, const Instance& stored,
                                 CheckedSystem& system);

Severity WorstOf(const std::vector<Finding>& findings);

// What a finding says, such as "protocol 'UCP' is no protocol; write TAP".
std::string FindingText(const Finding& finding);

// A line for the diagnosis, with its first finding, and one for each further finding.
void WriteDiagnosis(const ReportWriter& report, const Diagnosis& diagnosis);

}  // namespace brantel::host
