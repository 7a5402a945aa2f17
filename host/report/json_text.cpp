#include "host/report/json_text.h"

#include <nlohmann/json.hpp>
#include <utility>

namespace brantel::host {
namespace {

using Json = nlohmann::ordered_json;

constexpr int kDeepest = 8;

Json JsonOf(const Value& value);

struct ToJson {
  Json operator()(const auto& simple) const { return simple; }
  Json operator()(const Value::List& values) const {
    Json list = Json::array();
    for (const Value& value : values)
      list.push_back(JsonOf(value));
    return list;
  }
  Json operator()(const Record& record) const {
    Json object = Json::object();
    for (const Member& member : record.members())
      object[member.name] = JsonOf(member.value);
    return object;
  }
};

Json JsonOf(const Value& value) {
  return std::visit(ToJson(), value.variant());
}

Value ValueOf(const Json& json);

Value ListOf(const Json& json) {
  Value::List values;
  for (const Json& element : json)
    values.push_back(ValueOf(element));
  return values;
}

Value RecordOf(const Json& json) {
  Record record;
  for (const auto& [name, value] : json.items())
    record[name] = ValueOf(value);
  return record;
}

Value WholeNumberOf(const Json& json) {
  const bool fits =
      !json.is_number_unsigned() || std::in_range<std::int64_t>(json.get<std::uint64_t>());
  return fits ? Value(json.get<std::int64_t>()) : Value(json.get<double>());
}

Value ValueOf(const Json& json) {
  if (json.is_boolean()) return json.get<bool>();
  if (json.is_number_integer()) return WholeNumberOf(json);
  if (json.is_number()) return json.get<double>();
  if (json.is_string()) return json.get<std::string>();
  if (json.is_array()) return ListOf(json);
  if (json.is_object()) return RecordOf(json);
  return nullptr;
}

std::string Dump(const Value& value, int indent) {
  return JsonOf(value).dump(indent, ' ', false, Json::error_handler_t::replace);
}

}  // namespace

std::string JsonLine(const Value& value) {
  return Dump(value, -1);
}

std::string JsonText(const Value& value) {
  return Dump(value, 2);
}

std::optional<Value> ParseJson(std::string_view text) {
  bool is_too_deep = false;
  const auto watch_depth = [&](int depth, Json::parse_event_t, const Json&) {
    is_too_deep = is_too_deep || depth >= kDeepest;
    return !is_too_deep;
  };
  const Json json = Json::parse(text, watch_depth, false);
  if (json.is_discarded() || is_too_deep) return std::nullopt;
  return ValueOf(json);
}

}  // namespace brantel::host
