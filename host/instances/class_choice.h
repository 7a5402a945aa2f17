#pragma once

#include <algorithm>
#include <functional>
#include <string>
#include <string_view>

#include "host/outcome/command_failure.h"
#include "host/text/letter_case.h"
#include "host/text/name_list.h"
#include "host/text/nearest_name.h"

namespace brantel::host {

// The one of the classes that has this name, in any letter case, as ProgIDs have it. Throws
// CommandFailure with the names to choose from when there is none.
template <typename Classes, typename NameOf>
const auto& ChooseClass(const Classes& classes, NameOf name_of, std::string_view name) {
  const auto found = std::ranges::find_if(classes, [&](const auto& candidate) {
    return EqualIgnoringCase(std::invoke(name_of, candidate), name);
  });
  if (found == classes.end()) {
    const auto names = NamesOf(classes, name_of);
    throw CommandFailure(ExitCode::kWrongUsage, "CLASS: " + UnknownName(name, "a notifier class",
                                                                        "classes", ViewsOf(names)));
  }
  return *found;
}

}  // namespace brantel::host
