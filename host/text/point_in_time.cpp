#include "host/text/point_in_time.h"

#include <array>
#include <charconv>
#include <cstdint>
#include <span>

namespace brantel::host {
namespace {

using std::chrono::days;
using std::chrono::milliseconds;
using std::chrono::minutes;

std::string Digits(std::int64_t number, std::size_t width) {
  std::string digits = std::to_string(number);
  return std::string(width - std::min(width, digits.size()), '0') + digits;
}

// Reads a text piece by piece. Once a piece is not there, no later one is either.
class TimeReader {
 public:
  explicit TimeReader(std::string_view text) : rest_(text) {}

  // So many digits.
  int Number(std::size_t width) {
    int number = 0;
    const char* const end = rest_.data() + std::min(width, rest_.size());
    const auto [stopped_at, error] = std::from_chars(rest_.data(), end, number);
    is_right_ = is_right_ && rest_.size() >= width && error == std::errc() && stopped_at == end &&
                rest_[0] != '-';
    rest_.remove_prefix(is_right_ ? width : 0);
    return number;
  }

  // The first of the characters for which one of these stands.
  char OneOf(std::string_view characters) {
    is_right_ = is_right_ && !rest_.empty() && characters.find(rest_[0]) != std::string_view::npos;
    if (!is_right_) return '\0';
    const char found = rest_[0];
    rest_.remove_prefix(1);
    return found;
  }

  [[nodiscard]] bool is_right() const { return is_right_; }
  [[nodiscard]] bool is_at_end() const { return is_right_ && rest_.empty(); }
  void Require(bool condition) { is_right_ = is_right_ && condition; }

 private:
  std::string_view rest_;
  bool is_right_ = true;
};

milliseconds ReadDay(TimeReader& reader) {
  const int year = reader.Number(4);
  reader.OneOf("-");
  const int month = reader.Number(2);
  reader.OneOf("-");
  const int day = reader.Number(2);
  const std::chrono::year_month_day date{std::chrono::year(year),
                                         std::chrono::month(static_cast<unsigned>(month)),
                                         std::chrono::day(static_cast<unsigned>(day))};
  reader.Require(date.ok());
  return reader.is_right() ? std::chrono::sys_days(date).time_since_epoch() : days(0);
}

minutes ReadHourAndMinute(TimeReader& reader) {
  const int hour = reader.Number(2);
  reader.OneOf(":");
  const int minute = reader.Number(2);
  reader.Require(hour < 24 && minute < 60);
  return std::chrono::hours(hour) + minutes(minute);
}

std::string DateText(const PointInTime& time, char separator) {
  const auto local = time.utc + time.offset;
  const auto midnight = std::chrono::floor<days>(local);
  const std::chrono::year_month_day date(midnight);
  const std::chrono::hh_mm_ss clock(local - midnight);
  return Digits(int{date.year()}, 4) + "-" + Digits(unsigned{date.month()}, 2) + "-" +
         Digits(unsigned{date.day()}, 2) + separator + Digits(clock.hours().count(), 2) + ":" +
         Digits(clock.minutes().count(), 2) + ":" + Digits(clock.seconds().count(), 2);
}

std::optional<milliseconds> ParseAge(std::string_view text) {
  struct Unit {
    char letter;
    std::chrono::seconds length;
  };
  constexpr std::array kUnits = {Unit{'s', std::chrono::seconds(1)}, Unit{'m', minutes(1)},
                                 Unit{'h', std::chrono::hours(1)}, Unit{'d', days(1)}};
  constexpr std::size_t kMostDigits = 6;
  if (text.size() < 2 || text.size() > kMostDigits + 1) return std::nullopt;
  TimeReader reader(text);
  const int count = reader.Number(text.size() - 1);
  for (const Unit& unit : kUnits) {
    if (reader.is_right() && text.back() == unit.letter) return count * unit.length;
  }
  return std::nullopt;
}

}  // namespace

std::string TimeText(const PointInTime& time) {
  const auto ms = time.utc.time_since_epoch() % milliseconds(1000);
  const auto ahead = std::chrono::abs(time.offset).count();
  return DateText(time, 'T') + "." + Digits(ms.count(), 3) +
         (time.offset < minutes(0) ? "-" : "+") + Digits(ahead / 60, 2) + ":" +
         Digits(ahead % 60, 2);
}

std::string ShortTimeText(const PointInTime& time) {
  return DateText(time, ' ');
}

std::optional<PointInTime> ParseTime(std::string_view text) {
  TimeReader reader(text);
  milliseconds local = ReadDay(reader);
  reader.OneOf("T");
  local += ReadHourAndMinute(reader);
  reader.OneOf(":");
  local += std::chrono::seconds(reader.Number(2));
  reader.OneOf(".");
  local += milliseconds(reader.Number(3));
  const char sign = reader.OneOf("+-");
  const minutes ahead = ReadHourAndMinute(reader);
  if (!reader.is_at_end()) return std::nullopt;
  const minutes offset = sign == '-' ? -ahead : ahead;
  return PointInTime{std::chrono::sys_time<milliseconds>(local - offset), offset};
}

std::optional<PointInTime> ParsePastTime(std::string_view text, const PointInTime& now) {
  if (const auto age = ParseAge(text)) return PointInTime{now.utc - *age, now.offset};
  TimeReader reader(text);
  milliseconds local = ReadDay(reader);
  if (!reader.is_at_end()) {
    reader.OneOf("T ");
    local += ReadHourAndMinute(reader);
  }
  if (!reader.is_at_end()) return std::nullopt;
  return PointInTime{std::chrono::sys_time<milliseconds>(local - now.offset), now.offset};
}

}  // namespace brantel::host
