#include "host/journal/journal_entry.h"

#include <algorithm>
#include <cstddef>
#include <map>

#include "host/report/json_text.h"

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
  return {.is_delivered = record.At("delivered").Flag(),
          .verdict = record.At("verdict").Text(),
          .result = record.At("result").Text(),
          .seconds = record.At("seconds").Number(),
          .log = record.At("log").Text()};
}

JournalEntry EntryOf(const Record& record) {
  const auto began = ParseTime(record.At("began").Text());
  if (!began) throw WrongRecord("it has no time");
  JournalEntry entry{.id = record.At("attempt").Text(),
                     .began = *began,
                     .command = record.At("command").Text(),
                     .class_name = record.At("class").Text(),
                     .instance = record.At("instance").Text(),
                     .event = record.At("event").Text(),
                     .machine = record.At("machine").Text(),
                     .process = record.At("process").Whole<std::uint32_t>()};
  if (const auto* decision = record.Get<std::string>("decision")) entry.decision = *decision;
  if (record.Find("delivered") != nullptr) entry.end = EndOf(record);
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
  if (!entry.decision.empty()) record["decision"] = entry.decision;
  if (entry.end) AppendEnd(record, *entry.end);
  return JsonLine(record) + "\n";
}

std::optional<JournalEntry> ParseJournalLine(std::string_view line) {
  return ReadRecord(line, EntryOf);
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
