#pragma once

#include <optional>
#include <string>
#include <string_view>

#include "host/report/record.h"

namespace brantel::host {

// What is written as JSON (RFC 8259): in one line, without a line end. What is no UTF-8 in it is
// replaced.
std::string JsonLine(const Value& value);

// The same in lines with indents, for people who edit it. Without a line end, too.
std::string JsonText(const Value& value);

// Reads one JSON text. Nothing when it is none, or when it is nested more deeply than what this
// program writes (8 levels).
std::optional<Value> ParseJson(std::string_view text);

// What `read` makes of the record that the line is. Nothing when the line is none, or when `read`
// throws WrongRecord.
template <typename Read>
auto ReadRecord(std::string_view line, const Read& read) {
  std::optional<decltype(read(Record()))> result;
  const auto json = ParseJson(line);
  const Record* const record = json ? json->Get<Record>() : nullptr;
  if (record == nullptr) return result;
  try {
    result = read(*record);
  } catch (const WrongRecord&) {
    result.reset();
  }
  return result;
}

}  // namespace brantel::host
