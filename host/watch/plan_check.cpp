#include "host/watch/plan_check.h"

#include <algorithm>
#include <optional>
#include <string_view>
#include <utility>

namespace brantel::host {
namespace {

bool HasDigit(std::string_view text) {
  return std::ranges::any_of(text, [](char c) { return c >= '0' && c <= '9'; });
}

// What an instance of the class makes of the item's code.
std::optional<Finding> FaultOfCode(const std::string& instance, std::string_view class_name,
                                   const std::string& code) {
  if (class_name == "Beeper" && !HasDigit(code)) {
    return Finding{Severity::kWarning,
                   "item-code-digits",
                   "code",
                   code,
                   "has no digits, so that " + instance + " (Beeper) does not say which item it is",
                   "write a code of digits"};
  }
  if (class_name == "Voice" && code.empty()) {
    return Finding{Severity::kFailure,
                   "item-code-wave-file",
                   "code",
                   code,
                   "is missing, and without it " + instance + " (Voice) has no wave file to play",
                   "write its name, or [auto] for that of the item"};
  }
  return std::nullopt;
}

}  // namespace

std::vector<Diagnosis> DiagnoseItems(const WatchPlan& plan,
                                     const std::map<std::string, std::string>& classes) {
  std::vector<Diagnosis> diagnoses;
  for (const WatchedItem& item : plan.items) {
    Diagnosis diagnosis{"item", item.name};
    for (const std::size_t alert : item.alerts) {
      for (const std::string& instance : plan.alerts[alert].instances) {
        const auto known = classes.find(instance);
        if (known == classes.end()) continue;
        if (auto fault = FaultOfCode(instance, known->second, item.code))
          diagnosis.findings.push_back(*std::move(fault));
      }
    }
    if (!diagnosis.findings.empty()) diagnoses.push_back(std::move(diagnosis));
  }
  return diagnoses;
}

}  // namespace brantel::host
