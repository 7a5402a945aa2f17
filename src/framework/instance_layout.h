#pragma once

#include <cstdint>
#include <limits>
#include <span>
#include <string_view>

#include "framework/guid.h"

namespace brantel {

enum class FieldKind {
  kText,     // 32-bit length counting the NUL, then the ANSI text with its NUL
  kInteger,  // a bare 32-bit little-endian number without a length
};

enum class FieldPresence {
  kMandatory,
  kOptional,  // older versions wrote files that end before it
};

// One field of a class's instance file; a layout lists them in file order.
struct InstanceField {
  std::string_view name;
  FieldKind kind = FieldKind::kText;
  FieldPresence presence = FieldPresence::kMandatory;
  // A stored number outside this range is ignored and the field keeps 0.
  std::int32_t minimum = std::numeric_limits<std::int32_t>::min();
  std::int32_t maximum = std::numeric_limits<std::int32_t>::max();
};

enum class TextReader {
  kLimited,  // refuses a text whose stored length is 1024 or more
  kChunked,  // takes any length
};

enum class ShortFile {
  kTolerated,  // what is missing stays empty
  kRefused,
};

// How a class's instance file is laid out: the magic that names the class, then its fields.
struct InstanceLayout {
  Guid magic;
  std::span<const InstanceField> fields;
  TextReader text_reader = TextReader::kLimited;
  ShortFile short_file = ShortFile::kTolerated;
};

}  // namespace brantel
