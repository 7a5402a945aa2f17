#pragma once

#include <string>

#include "description/class_description.h"
#include "tests/torture/machine.h"

namespace brantel {

// Instances of which every text names the generation that it is of.

inline constexpr std::string_view kDefaultPath = "C:\\the directory of the alerts\\Default";

// What an instance of a generation holds in a field.
std::string ValueOf(const InstanceField& field, std::string_view generation);

// What an operator enters into a number field.
inline constexpr std::int32_t kEnteredNumber = 7;

// Stores the class's instance "Default" and the one of InstancePath(), and nothing else.
void StoreInstances(Machine& machine, const ClassDescription& description);

// What an operator who saves the instance of InstancePath() has left, and what may have become of
// it. A file is as it was, as it is on `whole`, where nothing failed, or without what the operator
// was not shown where that could not be read; all others are torn.
struct Saved {
  const Machine& machine;
  const Machine& whole;
  const ClassDescription& description;
  bool (*is_shown)(const InstanceField& field);

  // What is wrong: a success for which the instance is not saved, a torn file, no file left of the
  // instance. `may_lose` says that there may be none.
  [[nodiscard]] std::string Judge(Result result, bool may_lose) const;

 private:
  // What was saved by somebody who was shown nothing of what was stored.
  [[nodiscard]] std::string WithoutTheUnshown() const;
};

}  // namespace brantel
