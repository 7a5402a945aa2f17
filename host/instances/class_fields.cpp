#include "host/instances/class_fields.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <cstddef>
#include <cstdint>
#include <vector>

#include "host/instances/class_choice.h"
#include "host/instances/field_guide.h"
#include "host/outcome/command_failure.h"
#include "host/text/letter_case.h"
#include "host/text/name_list.h"
#include "host/text/nearest_name.h"
#include "module/class_descriptions.h"

namespace brantel::host {
namespace {

// "text of at most 1022 bytes", "number from 0 to 10".
std::string ValueText(const InstanceLayout& layout, const InstanceField& field) {
  if (field.kind == FieldKind::kInteger) {
    return "number from " + std::to_string(field.minimum) + " to " + std::to_string(field.maximum);
  }
  if (layout.text_reader == TextReader::kChunked) return "text";
  return "text of at most " + std::to_string(LongestText(layout)) + " bytes";
}

char FoldFieldName(char c) {
  return c == '-' || c == '_' ? ' ' : LowerCase(c);
}

std::size_t FindField(const InstanceLayout& layout, const std::string& name) {
  const auto found = std::ranges::find_if(layout.fields, [&](const InstanceField& field) {
    return std::ranges::equal(field.name, name, {}, FoldFieldName, FoldFieldName);
  });
  if (found == layout.fields.end()) {
    const auto names = NamesOf(layout.fields, &InstanceField::name);
    throw CommandFailure(ExitCode::kWrongUsage,
                         UnknownName(name, "a field of " + std::string(layout.class_name), "fields",
                                     ViewsOf(names)));
  }
  return static_cast<std::size_t>(found - layout.fields.begin());
}

[[noreturn]] void ThrowWrongValue(const InstanceField& field, const std::string& fault) {
  throw CommandFailure(ExitCode::kWrongUsage, std::string(field.name) + ": " + fault);
}

std::string EncodeText(const InstanceLayout& layout, const InstanceField& field,
                       const std::string& value, CodePageEncoder encode) {
  auto text = encode(value);
  if (!text) {
    ThrowWrongValue(field, "the text has characters that the system's code page lacks");
  }
  if (text->size() > LongestText(layout)) {
    ThrowWrongValue(field, "the text is longer than " + std::to_string(LongestText(layout)) +
                               " bytes, so that " + std::string(layout.class_name) +
                               " could not read it");
  }
  return std::move(*text);
}

std::int32_t ParseNumber(const InstanceLayout& layout, const InstanceField& field,
                         const std::string& value) {
  std::int32_t number = 0;
  const char* const end = value.data() + value.size();
  const auto [stopped_at, error] = std::from_chars(value.data(), end, number);
  if (error != std::errc() || stopped_at != end || number < field.minimum ||
      number > field.maximum) {
    ThrowWrongValue(field, "'" + value + "' is not a " + ValueText(layout, field));
  }
  return number;
}

Record FieldRecord(const ClassDescription& notifier_class, const InstanceField& field) {
  const FieldGuide& guide = GuideOf(notifier_class, field.index);
  return {{"class", notifier_class.instances.class_name},
          {"field", field.name},
          {"needed", guide.need == Need::kNeeded},
          {"kind", field.kind == FieldKind::kInteger ? "number" : "text"},
          {"stored", ValueText(notifier_class.instances, field)},
          {"values", guide.values},
          {"default", guide.standard},
          {"variables", guide.filling == Filling::kFilledIn},
          {"secret", guide.secrecy == Secrecy::kSecret},
          {"meaning", guide.meaning}};
}

}  // namespace

const ClassDescription& FindDescription(std::string_view class_name) {
  return *ChooseClass(
      ClassDescriptions(),
      [](const ClassDescription* candidate) { return candidate->instances.class_name; },
      class_name);
}

void WriteFieldTable(const ReportWriter& report, const ClassDescription& notifier_class) {
  constexpr std::array kColumns = {Column{"field", "Field"}, Column{"needed", "Needed"},
                                   Column{"values", "Values"}, Column{"default", "Default"},
                                   Column{"meaning", "Meaning"}};
  std::vector<Record> records;
  for (const InstanceField& field : notifier_class.instances.fields)
    records.push_back(FieldRecord(notifier_class, field));
  report.Table(kColumns, records);
}

std::optional<FieldValue> FieldValue::Parse(std::string_view text) {
  const std::size_t equals = text.find('=');
  if (equals == std::string_view::npos || equals == 0) return std::nullopt;
  return FieldValue{std::string(text.substr(0, equals)), std::string(text.substr(equals + 1))};
}

Instance MakeInstance(const InstanceLayout& layout, std::span<const FieldValue> values,
                      CodePageEncoder encode) {
  return ChangeInstance(layout, Instance(layout.fields.size()), values, encode);
}

Instance ChangeInstance(const InstanceLayout& layout, Instance instance,
                        std::span<const FieldValue> values, CodePageEncoder encode) {
  std::vector<bool> given(layout.fields.size());
  for (const FieldValue& assignment : values) {
    const std::size_t index = FindField(layout, assignment.field);
    const InstanceField& field = layout.fields[index];
    if (given[index]) {
      throw CommandFailure(ExitCode::kWrongUsage,
                           std::string(field.name) + " is given more than once");
    }
    given[index] = true;
    if (field.kind == FieldKind::kInteger) {
      instance.set_integer(index, ParseNumber(layout, field, assignment.value));
    } else {
      instance.set_text(index, EncodeText(layout, field, assignment.value, encode));
    }
  }
  return instance;
}

}  // namespace brantel::host
