#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "framework/instance_layout.h"

namespace brantel {

// The values of one named configuration, one for each field of its class's layout.
class Instance {
 public:
  explicit Instance(std::size_t field_count) : values_(field_count) {}

  [[nodiscard]] const std::string& text(std::size_t field) const { return values_.at(field).text; }
  [[nodiscard]] std::int32_t integer(std::size_t field) const { return values_.at(field).integer; }
  void set_text(std::size_t field, std::string text) { values_.at(field).text = std::move(text); }
  void set_integer(std::size_t field, std::int32_t integer) { values_.at(field).integer = integer; }

  friend bool operator==(const Instance&, const Instance&) = default;

 private:
  struct Value {
    std::string text;
    std::int32_t integer = 0;

    friend bool operator==(const Value&, const Value&) = default;
  };

  std::vector<Value> values_;
};

// Whether the file begins with the magic of this layout's class.
bool HasMagic(const InstanceLayout& layout, std::string_view file);

// Reads the bytes of an instance file. Nothing when the magic is another class's, when a limited
// mandatory text has a stored length of 1024 or more, or when the layout refuses a short file.
// Otherwise short and garbled files give what is there: a text ends at its first NUL or where the
// file ends, and missing fields are empty or 0.
std::optional<Instance> DecodeInstance(const InstanceLayout& layout, std::string_view file);

enum class FileFlaw {
  kTextTooLong,  // for the limited reader
  kEndsEarly,    // within the field, or before a mandatory one
};

struct FlawedField {
  FileFlaw flaw;
  std::size_t field;

  friend bool operator==(const FlawedField&, const FlawedField&) = default;
};

// The first field for which DecodeInstance refuses a file of this layout's class, or that it can
// read only in part: for people who ask what is wrong with a file. Nothing for other classes'
// files.
std::optional<FlawedField> FindFlaw(const InstanceLayout& layout, std::string_view file);

// The bytes of the instance file for these values. A text is stored up to its first NUL.
std::string EncodeInstance(const InstanceLayout& layout, const Instance& instance);

// The longest text, in bytes without its NUL, that DecodeInstance gives back from what
// EncodeInstance made of it.
std::size_t LongestText(const InstanceLayout& layout);

}  // namespace brantel
