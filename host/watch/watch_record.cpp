#include "host/watch/watch_record.h"

#include <algorithm>
#include <array>
#include <cstddef>

#include "host/alert/message_variables.h"
#include "host/report/json_text.h"

namespace brantel::host {
namespace {

constexpr std::array<std::string_view, 3> kStatuses = {"unknown", "up", "down"};
constexpr std::array<std::string_view, 3> kAlertKinds = {"down", "repeat", "up"};
constexpr std::array<std::string_view, 3> kEnds = {"delivered", "failed", "uncertain"};

// In the order of the variant's alternatives.
constexpr std::array<std::string_view, 9> kEvents = {"status",    "decided", "attempt",
                                                     "end",       "dropped", "acknowledged",
                                                     "forgotten", "numbers", "note"};

template <typename Names>
int PlaceOf(const Names& names, const std::string& name) {
  const auto found = std::ranges::find(names, name);
  if (found == names.end()) throw WrongRecord("it has an unknown name");
  return static_cast<int>(found - names.begin());
}

template <typename Names, typename Enumeration>
std::string_view NameOf(const Names& names, Enumeration value) {
  return names.at(static_cast<std::size_t>(value));
}

WatchNumber NumberOf(const Record& record, std::string_view name) {
  constexpr WatchNumber kMost = WatchNumber{1} << 53;  // which JSON carries everywhere
  const auto number = record.At(name).Whole<WatchNumber>();
  if (number < 0 || number > kMost) throw WrongRecord("the number is out of range");
  return number;
}

Value DecisionRecord(const Decision& decision) {
  return Record{{"decision", decision.id},
                {"item", decision.item},
                {"rule", decision.rule},
                {"instance", decision.instance},
                {"alert", AlertKindName(decision.kind)},
                {"incident", decision.incident},
                {"event", EventText(decision.event)},
                {"variables", decision.variables}};
}

Decision DecisionOf(const Value& value) {
  const Record& record = value.Particulars();
  const auto event = ParseAlertEvent(record.At("event").Text());
  if (!event) throw WrongRecord("it has no event");
  Decision decision{.id = NumberOf(record, "decision"),
                    .item = record.At("item").Text(),
                    .rule = record.At("rule").Text(),
                    .instance = record.At("instance").Text(),
                    .kind = static_cast<AlertKind>(PlaceOf(kAlertKinds, record.At("alert").Text())),
                    .incident = NumberOf(record, "incident"),
                    .event = *event};
  // 0 is for what has not been decided, such as the last of a channel through which nothing was
  // told.
  if (decision.id == 0) throw WrongRecord("the number of a decision is 1 at least");
  for (const Value& variable : record.At("variables").Values()) {
    if (!MessageVariables().Assign(variable.Text())) throw WrongRecord("it is no variable");
    decision.variables.push_back(variable.Text());
  }
  return decision;
}

Value DecisionRecords(const std::vector<Decision>& decisions) {
  Value::List records;
  for (const Decision& decision : decisions)
    records.push_back(DecisionRecord(decision));
  return records;
}

std::vector<Decision> DecisionsOf(const Record& record) {
  std::vector<Decision> decisions;
  for (const Value& decision : record.At("decisions").Values())
    decisions.push_back(DecisionOf(decision));
  return decisions;
}

// Puts what an event says behind its time and its name.
struct Writer {
  void operator()(const StatusChange& change) const {
    record["item"] = change.item;
    record["status"] = StatusName(change.status);
    record["words"] = change.words;
    record["incident"] = change.incident;
    record["decisions"] = DecisionRecords(change.decisions);
  }
  void operator()(const AlertsDecided& decided) const {
    record["decisions"] = DecisionRecords(decided.decisions);
  }
  void operator()(const AttemptBegun& begun) const {
    record["decision"] = begun.decision;
    record["number"] = begun.number;
    record["may_be_doubled"] = begun.may_be_doubled;
  }
  void operator()(const AttemptEnded& ended) const {
    record["decision"] = ended.decision;
    record["end"] = NameOf(kEnds, ended.end);
    record["acknowledged"] = ended.is_acknowledged;
    record["words"] = ended.words;
  }
  void operator()(const AlertDropped& dropped) const {
    record["decision"] = dropped.decision;
    record["words"] = dropped.words;
  }
  void operator()(const Acknowledgement& acknowledgement) const {
    record["item"] = acknowledgement.item;
    record["incident"] = acknowledgement.incident;
    record["by"] = acknowledgement.by;
  }
  void operator()(const ItemForgotten& forgotten) const { record["item"] = forgotten.item; }
  void operator()(const NumbersTaken& taken) const { record["next"] = taken.next; }
  void operator()(const WatchNote& note) const {
    record["item"] = note.item;
    record["words"] = note.words;
  }

  Record& record;
};

// Reads the particulars of the event that a line is about.
class Reader {
 public:
  explicit Reader(const Record& record) : record_(record) {}

  void operator()(StatusChange& change) const {
    change.item = Text("item");
    change.status = static_cast<ItemStatus>(PlaceOf(kStatuses, Text("status")));
    change.words = Text("words");
    change.incident = NumberOf(record_, "incident");
    change.decisions = DecisionsOf(record_);
  }
  void operator()(AlertsDecided& decided) const { decided.decisions = DecisionsOf(record_); }
  void operator()(AttemptBegun& begun) const {
    begun.decision = NumberOf(record_, "decision");
    begun.number = record_.At("number").Whole<int>();
    begun.may_be_doubled = record_.At("may_be_doubled").Flag();
  }
  void operator()(AttemptEnded& ended) const {
    ended.decision = NumberOf(record_, "decision");
    ended.end = static_cast<AlertEnd>(PlaceOf(kEnds, Text("end")));
    ended.is_acknowledged = record_.At("acknowledged").Flag();
    ended.words = Text("words");
  }
  void operator()(AlertDropped& dropped) const {
    dropped.decision = NumberOf(record_, "decision");
    dropped.words = Text("words");
  }
  void operator()(Acknowledgement& acknowledgement) const {
    acknowledgement.item = Text("item");
    acknowledgement.incident = NumberOf(record_, "incident");
    acknowledgement.by = Text("by");
  }
  void operator()(ItemForgotten& forgotten) const { forgotten.item = Text("item"); }
  void operator()(NumbersTaken& taken) const { taken.next = NumberOf(record_, "next"); }
  void operator()(WatchNote& note) const {
    note.item = Text("item");
    note.words = Text("words");
  }

 private:
  [[nodiscard]] const std::string& Text(std::string_view name) const {
    return record_.At(name).Text();
  }

  const Record& record_;
};

template <std::size_t... kPlaces>
WatchEvent EventOf(int place, std::index_sequence<kPlaces...>) {
  WatchEvent event;
  (void)((place == static_cast<int>(kPlaces) && (event.emplace<kPlaces>(), true)) || ...);
  return event;
}

WatchRecord RecordFrom(const Record& line) {
  const auto time = ParseTime(line.At("time").Text());
  // None is older than computers.
  if (!time || time->utc.time_since_epoch().count() < 0) throw WrongRecord("it has no time");
  const int place = PlaceOf(kEvents, line.At("what").Text());
  WatchRecord record{*time, EventOf(place, std::make_index_sequence<kEvents.size()>())};
  std::visit(Reader(line), record.event);
  return record;
}

}  // namespace

std::string_view StatusName(ItemStatus status) {
  return NameOf(kStatuses, status);
}

std::string_view AlertKindName(AlertKind kind) {
  return NameOf(kAlertKinds, kind);
}

Record ParticularsOf(const WatchRecord& record) {
  static_assert(std::variant_size_v<WatchEvent> == kEvents.size());
  Record line = {{"time", TimeText(record.time)}, {"what", kEvents.at(record.event.index())}};
  std::visit(Writer{line}, record.event);
  return line;
}

std::string WatchLine(const WatchRecord& record) {
  return JsonLine(ParticularsOf(record)) + "\n";
}

std::optional<WatchRecord> ParseWatchLine(std::string_view line) {
  return ReadRecord(line, RecordFrom);
}

std::vector<WatchRecord> ReadWatchLines(std::string_view content) {
  std::vector<WatchRecord> records;
  while (!content.empty()) {
    const std::string_view line = content.substr(0, content.find('\n'));
    content.remove_prefix(std::min(content.size(), line.size() + 1));
    if (auto record = ParseWatchLine(line)) records.push_back(*std::move(record));
  }
  return records;
}

}  // namespace brantel::host
