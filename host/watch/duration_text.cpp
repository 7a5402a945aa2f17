#include "host/watch/duration_text.h"

#include <array>
#include <charconv>
#include <cstdint>
#include <system_error>

namespace brantel::host {
namespace {

using std::chrono::milliseconds;

struct Unit {
  std::string_view letters;  // in a file
  std::string_view words;    // for people
  milliseconds length;
};

// The largest first.
constexpr std::array kUnits = {
    Unit{"d", "d", std::chrono::days(1)}, Unit{"h", "h", std::chrono::hours(1)},
    Unit{"m", "min", std::chrono::minutes(1)}, Unit{"s", "s", std::chrono::seconds(1)},
    Unit{"ms", "ms", milliseconds(1)}};

constexpr milliseconds kLongest = std::chrono::days(366);

}  // namespace

std::optional<milliseconds> ParseDuration(std::string_view text) {
  std::int64_t count = 0;
  const char* const end = text.data() + text.size();
  const auto [stopped_at, error] = std::from_chars(text.data(), end, count);
  if (error != std::errc() || count < 0) return std::nullopt;
  const std::string_view letters(stopped_at, static_cast<std::size_t>(end - stopped_at));
  for (const Unit& unit : kUnits) {
    if (unit.letters == letters && count <= kLongest / unit.length) return count * unit.length;
  }
  return std::nullopt;
}

std::string DurationText(milliseconds duration) {
  for (const Unit& unit : kUnits) {
    if (duration >= unit.length && duration % unit.length == milliseconds(0))
      return std::to_string(duration / unit.length).append(" ").append(unit.words);
  }
  return "0 s";
}

}  // namespace brantel::host
