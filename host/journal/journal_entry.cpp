#include "host/journal/journal_entry.h"

#include <algorithm>
#include <cstddef>
#include <map>

namespace brantel::host {
namespace {

void AppendEnd(Record& record, const JournaledEnd& end) {
  record["seconds"] = end.seconds;
  record["delivered"] = end.is_delivered;
  record["verdict"] = end.verdict;
  record["result"] = end.result;
  record["log"] = end.log;
}

JournaledEnd EndOf(const Record& record) {
  return {.is_delivered = record.at("delivered").get<bool>(),
          .verdict = record.at("verdict").get<std::string>(),
          .result = record.at("result").get<std::string>(),
          .seconds = record.at("seconds").get<double>(),
          .log = record.at("log").get<std::string>()};
}

std::optional<JournalEntry> FromRecord(const Record& record) {
  const auto began = ParseTime(record.at("began").get<std::string>());
  if (!began) return std::nullopt;
  JournalEntry entry{.id = record.at("attempt").get<std::string>(),
                     .began = *began,
                     .command = record.at("command").get<std::string>(),
                     .class_name = record.at("class").get<std::string>(),
                     .instance = record.at("instance").get<std::string>(),
                     .event = record.at("event").get<std::string>(),
                     .machine = record.at("machine").get<std::string>(),
                     .process = record.at("process").get<std::uint32_t>()};
  if (record.contains("delivered")) entry.end = EndOf(record);
  return entry;
}

// Takes the first line from the text.
std::string_view CutLine(std::string_view& text) {
  const std::string_view line = text.substr(0, text.find('\n'));
  text.remove_prefix(std::min(text.size(), line.size() + 1));
  return line;
}

}  // namespace

std::string JournalLine(const JournalEntry& entry) {
  Record record = {{"attempt", entry.id},        {"began", TimeText(entry.began)},
                   {"command", entry.command},   {"class", entry.class_name},
                   {"instance", entry.instance}, {"event", entry.event},
                   {"machine", entry.machine},   {"process", entry.process}};
  if (entry.end) AppendEnd(record, *entry.end);
  return JsonLine(record) + "\n";
}

std::optional<JournalEntry> ParseJournalLine(std::string_view line) {
  try {
    return FromRecord(Record::parse(line));
  } catch (const Record::exception&) {
    return std::nullopt;
  }
}

std::vector<JournalEntry> ReadJournal(std::string_view content) {
  std::vector<JournalEntry> entries;
  std::map<std::string, std::size_t> places;
  while (!content.empty()) {
    auto entry = ParseJournalLine(CutLine(content));
    if (!entry) continue;
    const auto [place, is_new] = places.emplace(entry->id, entries.size());
    if (is_new) {
      entries.push_back(*std::move(entry));
    } else if (entry->end) {
      entries[place->second] = *std::move(entry);
    }
  }
  return entries;
}

}  // namespace brantel::host
