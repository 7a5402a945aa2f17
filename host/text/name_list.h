#pragma once

#include <functional>
#include <string>

namespace brantel::host {

// The names of things, separated by commas.
template <typename Things, typename NameOf>
std::string ListNames(const Things& things, NameOf name_of) {
  std::string names;
  for (const auto& thing : things) {
    if (!names.empty()) names += ", ";
    names += std::invoke(name_of, thing);
  }
  return names;
}

}  // namespace brantel::host
