#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "description/instance_layout.h"
#include "instance/byte_cursor.h"
#include "instance/byte_source.h"
#include "text/guid.h"

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

enum class FileFlaw {
  kTextTooLong,  // for the limited reader
  kEndsEarly,    // within the field, or before a mandatory one
};

struct FlawedField {
  FileFlaw flaw;
  std::size_t field;

  friend bool operator==(const FlawedField&, const FlawedField&) = default;
};

// Whether a file that begins with these bytes has the magic of this layout's class.
bool HasMagic(const InstanceLayout& layout, std::string_view beginning);

// Reads an instance from a file: first the magic, then no further than the last field. What the
// file throws goes through.
class InstanceReader {
 public:
  // Reads the magic. `file`, which stands at its beginning, must outlive the object.
  explicit InstanceReader(ByteSource& file);

  // The file's first 16 bytes, or all of a shorter file.
  [[nodiscard]] std::string_view magic() const { return {magic_.data(), magic_size_}; }

  // Reads the fields, once. Nothing when the magic is another class's, when a limited mandatory
  // text has a stored length of 1024 or more, or when the layout refuses a short file. Otherwise
  // short and garbled files give what is there: a text ends at its first NUL or where the file
  // ends, and missing fields are empty or 0. No stored length is believed beyond the file's end.
  std::optional<Instance> Read(const InstanceLayout& layout);

  // The first field for which Read refused a file of the layout's class, or that it could read only
  // in part: for people who ask what is wrong with a file. Nothing for other classes' files.
  [[nodiscard]] std::optional<FlawedField> flaw() const { return flaw_; }

 private:
  // False when the field makes the file unreadable.
  bool ReadField(const InstanceLayout& layout, std::size_t index, Instance& instance);
  void NoteFlaw(FileFlaw flaw, std::size_t field);

  ByteCursor cursor_;
  std::array<char, sizeof(Guid)> magic_{};
  std::size_t magic_size_;
  std::optional<FlawedField> flaw_;
};

// Reads an instance of this layout's class from a file that stands at its beginning, or from the
// bytes of one.
std::optional<Instance> DecodeInstance(const InstanceLayout& layout, ByteSource& file);
std::optional<Instance> DecodeInstance(const InstanceLayout& layout, std::string_view file);

// The bytes of the instance file for these values. A text is stored up to its first NUL.
std::string EncodeInstance(const InstanceLayout& layout, const Instance& instance);

// The longest text, in bytes without its NUL, that DecodeInstance gives back from what
// EncodeInstance made of it.
std::size_t LongestText(const InstanceLayout& layout);

}  // namespace brantel
