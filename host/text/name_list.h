#pragma once

#include <functional>
#include <iterator>
#include <string>
#include <string_view>
#include <vector>

namespace brantel::host {

// The names of things, and the same to be handed on.
template <typename Things, typename NameOf>
std::vector<std::string> NamesOf(const Things& things, NameOf name_of) {
  std::vector<std::string> names;
  names.reserve(std::size(things));
  for (const auto& thing : things)
    names.emplace_back(std::invoke(name_of, thing));
  return names;
}

inline std::vector<std::string_view> ViewsOf(const std::vector<std::string>& names) {
  return {names.begin(), names.end()};
}

// The names of things, separated by commas.
template <typename Things, typename NameOf>
std::string ListNames(const Things& things, NameOf name_of) {
  std::string list;
  for (const std::string& name : NamesOf(things, name_of))
    list += (list.empty() ? "" : ", ") + name;
  return list;
}

}  // namespace brantel::host
