#pragma once

#include <chrono>
#include <cstdint>
#include <map>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "host/watch/plan_reader.h"
#include "host/watch/toml.h"

namespace brantel::host {

// A table of a plan's file that is read field by field. What is wrong with a field is complained
// of, and then the field counts as one that is not there.
class PlanTable {
 public:
  // `place` is what stands before the names of its fields, such as "items.web", or nothing.
  PlanTable(const toml::table& table, std::string place, std::vector<PlanComplaint>& complaints)
      : table_(table), place_(std::move(place)), complaints_(complaints) {}

  void SetPlace(const std::string& place) { place_ = place; }

  std::optional<std::string> Text(std::string_view field);
  std::optional<std::vector<std::string>> Texts(std::string_view field);
  std::optional<int> Number(std::string_view field, int least, int most);
  std::optional<std::chrono::milliseconds> Duration(std::string_view field,
                                                    std::chrono::milliseconds least,
                                                    std::chrono::milliseconds most);
  // A time of day such as "02:00"; "24:00" is the day's end.
  std::optional<std::chrono::minutes> TimeOfDay(std::string_view field);
  // A date with a time of day and without an offset, in milliseconds since 1970.
  std::optional<std::chrono::milliseconds> LocalTime(std::string_view field);
  // The place of the field's text among the names.
  std::optional<std::size_t> Choice(std::string_view field,
                                    std::span<const std::string_view> names);
  // The table of that name; null where there is none.
  const toml::table* Table(std::string_view field);
  // The tables of the array of that name.
  std::vector<const toml::table*> Tables(std::string_view field);

  [[nodiscard]] bool Has(std::string_view field) const { return table_.contains(field); }
  [[nodiscard]] const toml::table& table() const { return table_; }

  // Complains that the field is not there.
  void Lack(std::string_view field, const std::string& what);
  // Complains of a field that is there, or of the table.
  void Complain(std::string_view field, const std::string& words);

  // Complains of the fields that nobody has asked for.
  void Finish();

 private:
  template <typename T>
  std::optional<T> Of(std::string_view field, const std::string& allowed);
  const toml::node* Find(std::string_view field);
  void ComplainAt(const toml::source_region& source, std::string_view field,
                  const std::string& words);

  const toml::table& table_;
  std::string place_;
  std::vector<PlanComplaint>& complaints_;
  std::vector<std::string> asked_for_;
};

}  // namespace brantel::host
