#pragma once

#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "host/report/record.h"
#include "host/text/text_sink.h"

namespace brantel::host {

enum class ReportForm { kText, kJson };

enum class Colour { kGreen, kYellow, kRed };

// A column of a table: the particular that stands in it, and what stands above.
struct Column {
  const char* key;
  const char* heading;
};

// The text without the colours of Painted.
std::string WithoutColours(std::string_view text);

// Writes what a command tells: for people, or for programs as one JSON object a line. A command
// writes once and does not ask which of both it is.
class ReportWriter {
 public:
  // The sink must outlive the object. Only text for people has colours.
  ReportWriter(const TextSink& sink, ReportForm form, bool has_colours)
      : sink_(sink), form_(form), has_colours_(has_colours && form == ReportForm::kText) {}

  // Words around what is told, which programs do not get.
  void Prose(std::string_view words) const;

  // One thing, in these words or as this record.
  void Entry(std::string_view words, const Record& record) const;

  // Things of one kind, as the rows of a table or record by record. Yes and no stand for what is
  // true or false, "-" for null, and control characters are shown by their numbers.
  void Table(std::span<const Column> columns, std::span<const Record> records) const;

  // The words in that colour where there are colours.
  [[nodiscard]] std::string Painted(Colour colour, std::string_view words) const;

 private:
  const TextSink& sink_;
  ReportForm form_;
  bool has_colours_;
};

}  // namespace brantel::host
