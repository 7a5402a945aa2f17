#include "host/watch/watch_words.h"

#include <array>
#include <string_view>
#include <vector>

#include "host/text/control_characters.h"

namespace brantel::host {
namespace {

std::string AlertName(WatchNumber decision) {
  return "alert " + std::to_string(decision);
}

std::string_view EndWords(AlertEnd end) {
  switch (end) {
    case AlertEnd::kDelivered:
      return "delivered";
    case AlertEnd::kFailed:
      return "failed";
    case AlertEnd::kUncertain:
      break;
  }
  return "nobody knows whether it got out";
}

std::string DecisionWords(const Decision& decision) {
  constexpr std::array<std::string_view, 3> kTold = {"is down", "is still down", "is up again"};
  return AlertName(decision.id) + ": " + decision.instance + " is to tell that " + decision.item +
         " " + std::string(kTold.at(static_cast<std::size_t>(decision.kind)));
}

// What there is to be said of an event, a text for each line.
class Words {
 public:
  explicit Words(const ReportWriter& report) : report_(report) {}

  using Lines = std::vector<std::string>;

  Lines operator()(const StatusChange& change) const {
    Lines lines = {change.item + " is " + Status(change.status) + ": " +
                   ShowControlCharacters(change.words)};
    for (const Decision& decision : change.decisions)
      lines.push_back(DecisionWords(decision));
    return lines;
  }
  Lines operator()(const AlertsDecided& decided) const {
    Lines lines;
    for (const Decision& decision : decided.decisions)
      lines.push_back(DecisionWords(decision));
    return lines;
  }
  Lines operator()(const AttemptBegun& begun) const {
    return {AlertName(begun.decision) + ": attempt " + std::to_string(begun.number) +
            (begun.may_be_doubled ? ", though it may have got out before" : "")};
  }
  Lines operator()(const AttemptEnded& ended) const {
    return {AlertName(ended.decision) + ": " + std::string(EndWords(ended.end)) +
            (ended.is_acknowledged ? " and acknowledged" : "") +
            (ended.words.empty() ? "" : ": " + ShowControlCharacters(ended.words))};
  }
  Lines operator()(const AlertDropped& dropped) const {
    return {AlertName(dropped.decision) + " is dropped: " + ShowControlCharacters(dropped.words)};
  }
  Lines operator()(const Acknowledgement& acknowledgement) const {
    return {acknowledgement.item + ": acknowledged by " +
            ShowControlCharacters(acknowledgement.by)};
  }
  Lines operator()(const ItemForgotten& forgotten) const {
    return {forgotten.item + " is not watched any more"};
  }
  Lines operator()(const NumbersTaken&) const { return {}; }
  Lines operator()(const WatchNote& note) const {
    return {(note.item.empty() ? "" : note.item + ": ") + ShowControlCharacters(note.words)};
  }

 private:
  [[nodiscard]] std::string Status(ItemStatus status) const {
    return report_.Painted(status == ItemStatus::kUp ? Colour::kGreen : Colour::kRed,
                           StatusName(status));
  }

  const ReportWriter& report_;
};

Record RecordOf(const ItemSnapshot& item) {
  const bool is_known = item.status != ItemStatus::kUnknown;
  Record record = {{"item", item.name},
                   {"kind", item.kind == ItemKind::kService ? "service" : "item"},
                   {"device", item.device},
                   {"status", StatusName(item.status)}};
  record["since"] = is_known ? Value(TimeText(item.since)) : Value();
  record["words"] = is_known ? Value(item.words) : Value();
  if (item.was_tried) {
    record["tried"] = TimeText(item.last_time);
    record["answers"] = item.last.is_up;
    record["last"] = item.last.words;
  }
  record["hold"] = item.hold;
  record["maintenance"] = item.maintenance;
  record["acknowledged_by"] = item.acknowledged_by;
  record["open_alerts"] = item.open_alerts;
  return record;
}

// What a person should know of the item in the table's last column.
std::string Remarks(const ItemSnapshot& item) {
  std::string remarks;
  const auto add = [&](const std::string& remark) {
    remarks += (remarks.empty() ? "" : "; ") + remark;
  };
  if (!item.acknowledged_by.empty()) add("acknowledged by " + item.acknowledged_by);
  if (!item.hold.empty()) add("nobody is told: " + item.hold);
  if (item.hold.empty() && !item.maintenance.empty()) add("it is " + item.maintenance);
  if (item.open_alerts > 0) add(std::to_string(item.open_alerts) + " alerts have not got through");
  return remarks;
}

}  // namespace

void TellRecord(const ReportWriter& report, const WatchRecord& record) {
  std::string text;
  for (const std::string& line : std::visit(Words(report), record.event))
    text += ShortTimeText(record.time) + "  " + line + "\n";
  if (!text.empty()) report.Entry(text, ParticularsOf(record));
}

void TellItems(const ReportWriter& report, const std::vector<ItemSnapshot>& items) {
  static constexpr std::array kColumns = {Column{"status", "STATUS"}, Column{"item", "ITEM"},
                                          Column{"since", "SINCE"}, Column{"words", "WHY"},
                                          Column{"remarks", "REMARKS"}};
  std::vector<Record> records;
  for (const ItemSnapshot& item : items) {
    records.push_back(RecordOf(item));
    records.back()["remarks"] = Remarks(item);
  }
  report.Table(kColumns, records);
}

void TellOpenAlerts(const ReportWriter& report, const WatchMemory& memory) {
  for (const auto& [id, open] : memory.open()) {
    const std::string state =
        open.is_under_way    ? "under way"
        : open.attempts == 0 ? "not tried yet"
                             : "attempt " + std::to_string(open.attempts) + ": " + open.last_words;
    report.Entry(DecisionWords(open.decision) + "; " + ShowControlCharacters(state) + "\n",
                 {{"alert", id},
                  {"item", open.decision.item},
                  {"instance", open.decision.instance},
                  {"kind", AlertKindName(open.decision.kind)},
                  {"decided", TimeText(open.decided_at)},
                  {"attempts", open.attempts},
                  {"under_way", open.is_under_way},
                  {"last", open.last_words}});
  }
}

}  // namespace brantel::host
