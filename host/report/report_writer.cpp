#include "host/report/report_writer.h"

#include "host/report/json_text.h"
#include "host/text/control_characters.h"
#include "host/text/text_table.h"

namespace brantel::host {
namespace {

// Of the standard sequences for terminals (ECMA-48).
std::string_view ColourSequence(Colour colour) {
  switch (colour) {
    case Colour::kGreen:
      return "\x1B[32m";
    case Colour::kYellow:
      return "\x1B[33m";
    case Colour::kRed:
      return "\x1B[31m";
  }
  return "";
}

constexpr std::string_view kPlain = "\x1B[0m";

std::string Cell(const Record& record, const char* key) {
  const Value* value = record.Find(key);
  if (value == nullptr || value->is_null()) return "-";
  if (const auto* flag = value->Get<bool>()) return *flag ? "yes" : "no";
  if (const auto* text = value->Get<std::string>()) return ShowControlCharacters(*text);
  return JsonLine(*value);
}

}  // namespace

std::string WithoutColours(std::string_view text) {
  std::string plain(text);
  for (const std::string_view sequence :
       {ColourSequence(Colour::kGreen), ColourSequence(Colour::kYellow),
        ColourSequence(Colour::kRed), kPlain}) {
    for (std::size_t at = 0; (at = plain.find(sequence, at)) != std::string::npos;)
      plain.erase(at, sequence.size());
  }
  return plain;
}

void ReportWriter::Prose(std::string_view words) const {
  if (form_ == ReportForm::kText) sink_.Write(words);
}

void ReportWriter::Entry(std::string_view words, const Record& record) const {
  sink_.Write(form_ == ReportForm::kText ? std::string(words) : JsonLine(record) + "\n");
}

void ReportWriter::Table(std::span<const Column> columns, std::span<const Record> records) const {
  std::vector<std::vector<std::string>> rows(1);
  for (const Column& column : columns)
    rows.front().emplace_back(column.heading);
  for (const Record& record : records) {
    if (form_ == ReportForm::kJson) {
      sink_.Write(JsonLine(record) + "\n");
      continue;
    }
    auto& row = rows.emplace_back();
    for (const Column& column : columns)
      row.push_back(Cell(record, column.key));
  }
  if (form_ == ReportForm::kText) sink_.Write(FormatTextTable(rows));
}

std::string ReportWriter::Painted(Colour colour, std::string_view words) const {
  if (!has_colours_) return std::string(words);
  return std::string(ColourSequence(colour)).append(words).append(kPlain);
}

}  // namespace brantel::host
