#pragma once

#include <algorithm>
#include <functional>
#include <string>

#include "host/outcome/command_failure.h"
#include "host/text/letter_case.h"
#include "host/text/name_list.h"

namespace brantel::host {

// The one of the classes that has this name, in any letter case, as ProgIDs have it. Throws
// CommandFailure with the names to choose from when there is none.
template <typename Classes, typename NameOf>
const auto& ChooseClass(const Classes& classes, NameOf name_of, const std::string& name) {
  const auto found = std::ranges::find_if(classes, [&](const auto& candidate) {
    return EqualIgnoringCase(std::invoke(name_of, candidate), name);
  });
  if (found == classes.end()) {
    throw CommandFailure(ExitCode::kWrongUsage, "CLASS: '" + name + "' is not a notifier class; " +
                                                    "the classes are " +
                                                    ListNames(classes, name_of));
  }
  return *found;
}

}  // namespace brantel::host
