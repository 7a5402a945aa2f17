#include "host/text/nearest_name.h"

#include <algorithm>
#include <cstddef>
#include <numeric>
#include <vector>

#include "host/text/letter_case.h"

namespace brantel::host {
namespace {

// What is longer is no misspelling of a name, and not worth the time.
constexpr std::size_t kLongestMisspelling = 64;

// How many characters have to be put in, left out or changed (Levenshtein).
std::size_t Distance(std::string_view one, std::string_view other) {
  std::vector<std::size_t> costs(other.size() + 1);
  std::iota(costs.begin(), costs.end(), std::size_t{0});
  for (const char c : one) {
    std::size_t diagonal = costs[0]++;
    for (std::size_t i = 0; i < other.size(); ++i) {
      const std::size_t changed = diagonal + (LowerCase(c) == LowerCase(other[i]) ? 0 : 1);
      diagonal = costs[i + 1];
      costs[i + 1] = std::min({changed, costs[i + 1] + 1, costs[i] + 1});
    }
  }
  return costs.back();
}

}  // namespace

std::string_view NearestName(std::string_view given, std::span<const std::string_view> names) {
  if (given.size() > kLongestMisspelling) return {};
  std::string_view nearest;
  std::size_t least = (given.size() + 2) / 3 + 1;
  for (const std::string_view name : names) {
    const std::size_t distance = Distance(given, name);
    if (distance >= least || distance >= name.size()) continue;
    least = distance;
    nearest = name;
  }
  return nearest;
}

std::string UnknownName(std::string_view given, const std::string& kind, const std::string& kinds,
                        std::span<const std::string_view> names) {
  const std::string_view nearest = NearestName(given, names);
  std::string message = "'" + std::string(given) + "' is not " + kind + "; ";
  if (nearest.empty()) return message + "the " + kinds + " are " + NamesInProse(names);
  return message.append("did you mean '").append(nearest).append("'?");
}

std::string NamesInProse(std::span<const std::string_view> names) {
  std::string prose;
  for (const std::string_view& name : names) {
    if (!prose.empty()) prose += &name == &names.back() ? " and " : ", ";
    prose += name;
  }
  return prose;
}

}  // namespace brantel::host
