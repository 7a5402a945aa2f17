#pragma once

#include <chrono>
#include <optional>
#include <string>
#include <string_view>

namespace brantel::host {

// A moment, and by how much the clocks were ahead of UTC where it was noted.
struct PointInTime {
  std::chrono::sys_time<std::chrono::milliseconds> utc{};
  std::chrono::minutes offset{};

  friend bool operator==(const PointInTime&, const PointInTime&) = default;
};

// As RFC 3339 writes it: "2026-11-22T03:12:09.123+01:00".
std::string TimeText(const PointInTime& time);

// For people: "2026-11-22 03:12:09", by the clocks of the place.
std::string ShortTimeText(const PointInTime& time);

// Reads a text of TimeText. Nothing when it is none.
std::optional<PointInTime> ParseTime(std::string_view text);

// Reads what people say of a time that has been: how long ago, as "90s", "30m", "12h" or "7d"; or a
// day, or a minute of it, as "2026-11-22" or "2026-11-22T03:12", by the clocks of `now`'s place.
// Nothing when it is neither, or when there is no such day.
std::optional<PointInTime> ParsePastTime(std::string_view text, const PointInTime& now);

}  // namespace brantel::host
