#include "host/report/record.h"

#include <algorithm>

namespace brantel::host {

// Here, where it is known what a member is.
Record::Record() = default;
Record::Record(std::initializer_list<Member> members) : members_(members) {}
Record::Record(const Record& other) = default;
Record::Record(Record&& other) noexcept = default;
Record& Record::operator=(const Record& other) = default;
Record& Record::operator=(Record&& other) noexcept = default;
Record::~Record() = default;

Value& Record::operator[](std::string_view name) {
  const auto found = std::ranges::find(members_, name, &Member::name);
  if (found != members_.end()) return found->value;
  members_.push_back({std::string(name), Value()});
  return members_.back().value;
}

const Value* Record::Find(std::string_view name) const {
  const auto found = std::ranges::find(members_, name, &Member::name);
  return found == members_.end() ? nullptr : &found->value;
}

const Value& Record::At(std::string_view name) const {
  if (const Value* value = Find(name)) return *value;
  throw WrongRecord("there is no " + std::string(name));
}

double Value::Number() const {
  if (const auto* whole = Get<std::int64_t>()) return static_cast<double>(*whole);
  return As<double>("a number");
}

}  // namespace brantel::host
