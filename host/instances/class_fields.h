#pragma once

#include <optional>
#include <span>
#include <string>
#include <string_view>

#include "description/class_description.h"
#include "host/report/report_writer.h"
#include "instance/instance_codec.h"

namespace brantel::host {

// The class with this name, in any letter case. Throws CommandFailure with the names to choose from
// when there is none.
const ClassDescription& FindDescription(std::string_view class_name);

// Tells of the class's fields: what each is for, what it may hold, and what comes of it when it
// holds nothing.
void WriteFieldTable(const ReportWriter& report, const ClassDescription& notifier_class);

// A field of an instance and what it is to hold, as they are given. Text is UTF-8.
struct FieldValue {
  std::string field;
  std::string value;

  // Takes "FIELD=VALUE". Nothing when the text is of another form.
  static std::optional<FieldValue> Parse(std::string_view text);

  friend bool operator==(const FieldValue&, const FieldValue&) = default;
};

// Puts a UTF-8 text into the code page of the instance files. Nothing when that lacks some of its
// characters.
using CodePageEncoder = std::optional<std::string> (*)(std::string_view text);

// The instance whose fields hold these values; the others are empty or 0. Fields are found by their
// names in any letter case, and with "-" or "_" for blanks. Throws CommandFailure for wrong usage,
// with the field's name: a field that the class does not have, or that is given twice; a number
// that is malformed or outside its range; a text that the class could not read back or `encode`
// cannot take.
Instance MakeInstance(const InstanceLayout& layout, std::span<const FieldValue> values,
                      CodePageEncoder encode);

// The same in an instance that holds something already, its texts as they are stored.
Instance ChangeInstance(const InstanceLayout& layout, Instance instance,
                        std::span<const FieldValue> values, CodePageEncoder encode);

}  // namespace brantel::host
