#include "host/instances/instance_text.h"

#include <algorithm>
#include <array>
#include <cstddef>
#include <sstream>
#include <utility>

#include "host/instances/field_guide.h"
#include "host/text/control_characters.h"
#include "host/text/letter_case.h"
#include "host/text/log_text.h"
#include "host/text/text_table.h"
#include "host/text/utf8_characters.h"
#include "module/class_descriptions.h"

namespace brantel::host {
namespace {

// In characters: name, class and summary of most instances then fit into a line of a terminal.
constexpr std::size_t kSummaryWidth = 48;

using Rows = std::vector<std::vector<std::string>>;

std::string ValueText(const InstanceFile& file, std::size_t field) {
  return file.layout->fields[field].kind == FieldKind::kInteger
             ? std::to_string(file.instance->integer(field))
             : file.instance->text(field);
}

// A row for each line of the value, the field's name in the first.
void AppendField(Rows& rows, const InstanceFile& file, std::size_t field) {
  rows.push_back({std::string(file.layout->fields[field].name)});
  std::istringstream lines(LogText().Render(ValueText(file, field)));
  for (std::string line; std::getline(lines, line);) {
    if (rows.back().size() > 1) rows.push_back({""});
    rows.back().push_back(line);
  }
}

std::string Shortened(const std::string& text) {
  constexpr std::string_view kMark = "...";
  if (CountCharacters(text) <= kSummaryWidth) return text;
  return std::string(FirstCharacters(text, kSummaryWidth - kMark.size())).append(kMark);
}

// The first texts that are not empty.
std::string FirstTexts(const InstanceFile& file) {
  std::string texts;
  for (std::size_t i = 0; i < file.layout->fields.size(); ++i) {
    const std::string& text = file.instance->text(i);
    if (text.empty()) continue;
    texts += (texts.empty() ? "" : ", ") + ShowControlCharacters(text);
  }
  return Shortened(texts);
}

std::string Summary(const InstanceFile& file) {
  const std::string texts = file.instance ? FirstTexts(file) : "";
  if (texts.empty() || file.fault.empty()) return texts + file.fault;
  return texts + " (" + file.fault + ")";
}

bool ComesBefore(const InstanceFile& one, const InstanceFile& other) {
  if (EqualIgnoringCase(one.name, other.name)) return one.name < other.name;
  return ComesBeforeIgnoringCase(one.name, other.name);
}

// The fields of passwords that hold one.
std::vector<std::size_t> SecretFields(const InstanceFile& file) {
  if (!file.instance) return {};
  const ClassDescription& notifier_class = *FindClassDescription(file.layout->class_name);
  std::vector<std::size_t> fields;
  for (std::size_t i = 0; i < file.layout->fields.size(); ++i) {
    const bool is_secret = GuideOf(notifier_class, i).secrecy == Secrecy::kSecret;
    if (is_secret && !file.instance->text(i).empty()) fields.push_back(i);
  }
  return fields;
}

}  // namespace

std::string InstanceText(const InstanceFile& file) {
  Rows rows;
  for (std::size_t i = 0; i < file.layout->fields.size(); ++i) {
    AppendField(rows, file, i);
  }
  return "Instance " + ShowControlCharacters(file.name) + " of " +
         std::string(file.layout->class_name) + "\n\n" + FormatTextTable(rows);
}

Record InstanceRecord(const InstanceFile& file) {
  Record fields;
  for (std::size_t i = 0; i < file.layout->fields.size(); ++i) {
    Value& value = fields[file.layout->fields[i].name];
    if (file.layout->fields[i].kind == FieldKind::kInteger) {
      value = file.instance->integer(i);
    } else {
      value = file.instance->text(i);
    }
  }
  return {{"class", file.layout->class_name}, {"name", file.name}, {"fields", std::move(fields)}};
}

void WriteInstanceTable(const ReportWriter& report, std::span<const InstanceFile> files) {
  constexpr std::array kColumns = {Column{"name", "Name"}, Column{"class", "Class"},
                                   Column{"summary", "Summary"}};
  std::vector<Record> records;
  for (const InstanceFile& file : files) {
    Record record{{"name", file.name}, {"class", nullptr}, {"summary", Summary(file)}};
    if (file.layout != nullptr) record["class"] = file.layout->class_name;
    record["fault"] = file.fault;
    records.push_back(std::move(record));
  }
  report.Table(kColumns, records);
}

void SortByName(std::vector<InstanceFile>& files) {
  std::ranges::sort(files, ComesBefore);
}

void HideSecrets(InstanceFile& file) {
  for (const std::size_t field : SecretFields(file))
    file.instance->set_text(field, std::string(kHiddenSecret));
}

std::vector<std::string> SecretTexts(const InstanceFile& file) {
  std::vector<std::string> secrets;
  for (const std::size_t field : SecretFields(file))
    secrets.push_back(file.instance->text(field));
  return secrets;
}

}  // namespace brantel::host
