#pragma once

#include <concepts>
#include <cstddef>
#include <cstdint>
#include <initializer_list>
#include <optional>
#include <stdexcept>
#include <string>
#include <string_view>
#include <utility>
#include <variant>
#include <vector>

namespace brantel::host {

class Value;
struct Member;

// What is read from a record is not there, or is of another kind.
class WrongRecord : public std::runtime_error {
 public:
  using std::runtime_error::runtime_error;
};

// One thing that is told of, with its particulars in their order, each by its own name. Texts are
// UTF-8. Records are what JSON calls objects, without what a library for JSON costs to compile.
class Record {
 public:
  Record();
  Record(std::initializer_list<Member> members);
  Record(const Record& other);
  Record(Record&& other) noexcept;
  Record& operator=(const Record& other);
  Record& operator=(Record&& other) noexcept;
  ~Record();

  // The particular of that name, made null at the end where there is none.
  Value& operator[](std::string_view name);

  // Null where there is none of that name.
  [[nodiscard]] const Value* Find(std::string_view name) const;

  // Null also where it is no T: bool, std::int64_t, double, std::string, Value::List or Record.
  template <typename T>
  [[nodiscard]] const T* Get(std::string_view name) const;

  // Throws WrongRecord where there is none of that name.
  [[nodiscard]] const Value& At(std::string_view name) const;

  [[nodiscard]] const std::vector<Member>& members() const { return members_; }

 private:
  std::vector<Member> members_;
};

// A particular: nothing, yes or no, a number, a text, several of them, or a record of its own.
class Value {
 public:
  using List = std::vector<Value>;
  using Variant =
      std::variant<std::nullptr_t, bool, std::int64_t, double, std::string, List, Record>;

  Value(std::nullptr_t = nullptr) {}
  Value(std::same_as<bool> auto is_true) : value_(is_true) {}
  template <std::integral T>
  requires(!std::same_as<T, bool>) Value(T number) : value_(static_cast<std::int64_t>(number)) {}
  Value(double number) : value_(number) {}
  Value(std::string text) : value_(std::move(text)) {}
  Value(std::string_view text) : value_(std::string(text)) {}
  Value(const char* text) : value_(std::string(text)) {}
  Value(List values) : value_(std::move(values)) {}
  Value(Record record) : value_(std::move(record)) {}

  // Null where there is none.
  template <typename T>
  Value(const std::optional<T>& value) : Value(value ? Value(*value) : Value()) {}

  // The values that a range has.
  template <typename T>
  Value(const std::vector<T>& values) : value_(List(values.begin(), values.end())) {}

  [[nodiscard]] bool is_null() const { return std::holds_alternative<std::nullptr_t>(value_); }

  // Null where it is no T: bool, std::int64_t, double, std::string, List or Record.
  template <typename T>
  [[nodiscard]] const T* Get() const {
    return std::get_if<T>(&value_);
  }

  // Each throws WrongRecord where the value is of another kind.
  [[nodiscard]] bool Flag() const { return As<bool>("yes or no"); }
  [[nodiscard]] const std::string& Text() const { return As<std::string>("a text"); }
  [[nodiscard]] const List& Values() const { return As<List>("a list"); }
  [[nodiscard]] const Record& Particulars() const { return As<Record>("a record"); }
  [[nodiscard]] double Number() const;

  // Also where the type does not hold the number.
  template <std::integral T>
  [[nodiscard]] T Whole() const {
    const auto number = As<std::int64_t>("a whole number");
    if (!std::in_range<T>(number)) throw WrongRecord("the number is out of range");
    return static_cast<T>(number);
  }

  [[nodiscard]] const Variant& variant() const { return value_; }

 private:
  template <typename T>
  [[nodiscard]] const T& As(const char* kind) const {
    if (const T* value = Get<T>()) return *value;
    throw WrongRecord(std::string("it is not ") + kind);
  }

  Variant value_;
};

struct Member {
  std::string name;
  Value value;
};

template <typename T>
const T* Record::Get(std::string_view name) const {
  const Value* const value = Find(name);
  return value == nullptr ? nullptr : value->Get<T>();
}

}  // namespace brantel::host
