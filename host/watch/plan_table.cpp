#include "host/watch/plan_table.h"

#include <algorithm>
#include <sstream>

#include "host/text/control_characters.h"
#include "host/text/name_list.h"
#include "host/text/nearest_name.h"
#include "host/text/utf8_characters.h"
#include "host/watch/duration_text.h"

namespace brantel::host {
namespace {

using std::chrono::milliseconds;
using std::chrono::minutes;

constexpr std::size_t kMostShown = 60;  // characters

bool HasControlCharacter(std::string_view text) {
  return ShowControlCharacters(text) != text;
}

// What stands in the file.
std::string Shown(const toml::node& node) {
  std::ostringstream text;
  text << toml::toml_formatter(toml::table{{"x", node}});
  const std::string written = text.str();
  const std::string shown = ShowControlCharacters(written.substr(written.find("= ") + 2));
  return CountCharacters(shown) <= kMostShown
             ? shown
             : std::string(FirstCharacters(shown, kMostShown)) + "...";
}

// Reads "HH:MM".
std::optional<minutes> ParseTimeOfDay(std::string_view text) {
  const auto is_digit = [](char c) { return c >= '0' && c <= '9'; };
  if (text.size() != 5 || text[2] != ':') return std::nullopt;
  for (const std::size_t i : {0U, 1U, 3U, 4U}) {
    if (!is_digit(text[i])) return std::nullopt;
  }
  const int hour = (text[0] - '0') * 10 + (text[1] - '0');
  const int minute = (text[3] - '0') * 10 + (text[4] - '0');
  if (minute > 59 || hour > 24 || (hour == 24 && minute > 0)) return std::nullopt;
  return minutes(hour * 60 + minute);
}

}  // namespace

const toml::node* PlanTable::Find(std::string_view field) {
  asked_for_.emplace_back(field);
  return table_.get(field);
}

template <typename T>
std::optional<T> PlanTable::Of(std::string_view field, const std::string& allowed) {
  const toml::node* const node = Find(field);
  if (node == nullptr) return std::nullopt;
  auto value = node->value_exact<T>();
  if (!value) Complain(field, "must be " + allowed + "; it is " + Shown(*node));
  return value;
}

std::optional<std::string> PlanTable::Text(std::string_view field) {
  auto text = Of<std::string>(field, "a text");
  if (!text || (!text->empty() && !HasControlCharacter(*text))) return text;
  Complain(field, text->empty() ? "must not be empty" : "must hold no control character");
  return std::nullopt;
}

std::optional<std::vector<std::string>> PlanTable::Texts(std::string_view field) {
  const toml::node* const node = Find(field);
  if (node == nullptr) return std::nullopt;
  std::vector<std::string> texts;
  const toml::array* const array = node->as_array();
  if (array != nullptr) {
    for (const toml::node& element : *array) {
      const auto text = element.value_exact<std::string>();
      if (text && !text->empty() && !HasControlCharacter(*text)) texts.push_back(*text);
    }
  }
  if (array != nullptr && texts.size() == array->size()) return texts;
  Complain(field, R"(must be a list of texts such as ["one", "two"]; it is )" + Shown(*node));
  return std::nullopt;
}

std::optional<int> PlanTable::Number(std::string_view field, int least, int most) {
  const std::string allowed = std::to_string(least) + " to " + std::to_string(most);
  const auto number = Of<std::int64_t>(field, "a number, " + allowed);
  if (!number) return std::nullopt;
  if (*number >= least && *number <= most) return static_cast<int>(*number);
  Complain(field, "must be " + allowed + "; it is " + std::to_string(*number));
  return std::nullopt;
}

std::optional<milliseconds> PlanTable::Duration(std::string_view field, milliseconds least,
                                                milliseconds most) {
  const toml::node* const node = Find(field);
  if (node == nullptr) return std::nullopt;
  const auto text = node->value_exact<std::string>();
  const auto duration = text ? ParseDuration(*text) : std::nullopt;
  if (duration && *duration >= least && *duration <= most) return duration;
  Complain(field, "must be " + DurationText(least) + " to " + DurationText(most) +
                      R"(, written as "90s", "5m", "2h" or "1d"; it is )" + Shown(*node));
  return std::nullopt;
}

std::optional<minutes> PlanTable::TimeOfDay(std::string_view field) {
  const auto text = Of<std::string>(field, "a time of day such as \"02:00\"");
  if (!text) return std::nullopt;
  const auto time = ParseTimeOfDay(*text);
  if (!time) Complain(field, "must be a time of day such as \"02:00\"; it is '" + *text + "'");
  return time;
}

std::optional<milliseconds> PlanTable::LocalTime(std::string_view field) {
  const auto time = Of<toml::date_time>(field, "a time such as 2026-11-22T02:00:00");
  if (!time) return std::nullopt;
  if (time->offset) {
    Complain(field, "must have no offset: it is by the clocks of the place");
    return std::nullopt;
  }
  const std::chrono::sys_days day =
      std::chrono::year(time->date.year) / time->date.month / time->date.day;
  return day.time_since_epoch() + std::chrono::hours(time->time.hour) + minutes(time->time.minute) +
         std::chrono::seconds(time->time.second);
}

std::optional<std::size_t> PlanTable::Choice(std::string_view field,
                                             std::span<const std::string_view> names) {
  const auto text = Text(field);
  if (!text) return std::nullopt;
  const auto found = std::ranges::find(names, *text);
  if (found != names.end()) return static_cast<std::size_t>(found - names.begin());
  Complain(field, "must be one of " + NamesInProse(names) + "; it is '" + *text + "'");
  return std::nullopt;
}

const toml::table* PlanTable::Table(std::string_view field) {
  const toml::node* const node = Find(field);
  if (node != nullptr && !node->is_table())
    Complain(field, "must be a table, which begins with [" + std::string(field) + "]");
  return node == nullptr ? nullptr : node->as_table();
}

std::vector<const toml::table*> PlanTable::Tables(std::string_view field) {
  const toml::node* const node = Find(field);
  std::vector<const toml::table*> tables;
  if (node == nullptr) return tables;
  if (const toml::array* const array = node->as_array()) {
    for (const toml::node& element : *array) {
      if (const toml::table* const table = element.as_table()) tables.push_back(table);
    }
    if (tables.size() == array->size()) return tables;
  }
  Complain(field, "must be tables, each of which begins with [[" + std::string(field) + "]]");
  return {};
}

void PlanTable::Lack(std::string_view field, const std::string& what) {
  ComplainAt(table_.source(), field, "is missing; it is " + what);
}

void PlanTable::Complain(std::string_view field, const std::string& words) {
  const toml::node* const node = table_.get(field);
  ComplainAt(node == nullptr ? table_.source() : node->source(), field, words);
}

void PlanTable::Finish() {
  const auto known = ViewsOf(asked_for_);
  for (const auto& [key, node] : table_) {
    if (std::ranges::find(known, key.str()) != known.end()) continue;
    const std::string shown = ShowControlCharacters(key.str());
    const std::string kind = place_.empty() ? "known" : "known here";
    ComplainAt(key.source(), "", UnknownName(shown, kind, "fields", known));
  }
}

void PlanTable::ComplainAt(const toml::source_region& source, std::string_view field,
                           const std::string& words) {
  std::string place = place_;
  if (!field.empty()) place += (place.empty() ? "" : ".") + std::string(field);
  complaints_.push_back({source.begin.line, (place.empty() ? "" : place + ": ") + words});
}

}  // namespace brantel::host
