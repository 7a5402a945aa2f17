#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <variant>
#include <vector>

#include "host/alert/alert_event.h"
#include "host/report/record.h"
#include "host/text/point_in_time.h"

namespace brantel::host {

enum class ItemStatus { kUnknown, kUp, kDown };

enum class AlertKind { kDown, kRepeat, kUp };

enum class AlertEnd {
  kDelivered,
  kFailed,     // it did not go out
  kUncertain,  // nobody knows whether it did
};

// Numbers of decisions, and of the times from one fall of an item to its return. No journal has one
// of them twice.
using WatchNumber = std::int64_t;

// That somebody is to be told through an instance. It tells of the moment in which it was made,
// however long it takes to get out.
struct Decision {
  WatchNumber id = 0;
  std::string item{};
  std::string rule{};
  std::string instance{};
  AlertKind kind = AlertKind::kDown;
  WatchNumber incident = 0;
  AlertEvent event{};
  std::vector<std::string> variables{};  // of the message, each as "LETTER=VALUE"

  friend bool operator==(const Decision&, const Decision&) = default;
};

// What the journal of a watch has lines for.

// With what is to be told because of it: a line is there as a whole or not at all.
struct StatusChange {
  std::string item{};
  ItemStatus status = ItemStatus::kUnknown;
  std::string words{};       // what the last try came to
  WatchNumber incident = 0;  // which has begun, or which is over; 0 where nothing was known before
  std::vector<Decision> decisions{};

  friend bool operator==(const StatusChange&, const StatusChange&) = default;
};

struct AlertsDecided {
  std::vector<Decision> decisions{};

  friend bool operator==(const AlertsDecided&, const AlertsDecided&) = default;
};

struct AttemptBegun {
  WatchNumber decision = 0;
  int number = 0;  // 1 for the first
  bool may_be_doubled = false;

  friend bool operator==(const AttemptBegun&, const AttemptBegun&) = default;
};

struct AttemptEnded {
  WatchNumber decision = 0;
  AlertEnd end = AlertEnd::kFailed;
  bool is_acknowledged = false;  // by whoever was told
  std::string words{};

  friend bool operator==(const AttemptEnded&, const AttemptEnded&) = default;
};

// That it is not told after all.
struct AlertDropped {
  WatchNumber decision = 0;
  std::string words{};  // why

  friend bool operator==(const AlertDropped&, const AlertDropped&) = default;
};

struct Acknowledgement {
  std::string item{};
  WatchNumber incident = 0;
  std::string by{};

  friend bool operator==(const Acknowledgement&, const Acknowledgement&) = default;
};

// That the item is not watched any more.
struct ItemForgotten {
  std::string item{};

  friend bool operator==(const ItemForgotten&, const ItemForgotten&) = default;
};

// That numbers from here on are free.
struct NumbersTaken {
  WatchNumber next = 1;

  friend bool operator==(const NumbersTaken&, const NumbersTaken&) = default;
};

// What a person should know, and nothing goes by.
struct WatchNote {
  std::string item{};  // empty where it is about no item
  std::string words{};

  friend bool operator==(const WatchNote&, const WatchNote&) = default;
};

using WatchEvent =
    std::variant<StatusChange, AlertsDecided, AttemptBegun, AttemptEnded, AlertDropped,
                 Acknowledgement, ItemForgotten, NumbersTaken, WatchNote>;

struct WatchRecord {
  PointInTime time{};
  WatchEvent event{};

  friend bool operator==(const WatchRecord&, const WatchRecord&) = default;
};

// "up", "down" or "unknown".
std::string_view StatusName(ItemStatus status);

// "down", "repeat" or "up".
std::string_view AlertKindName(AlertKind kind);

// The record's particulars, as its line has them.
Record ParticularsOf(const WatchRecord& record);

// The record as a line of the journal, with its end.
std::string WatchLine(const WatchRecord& record);

// Reads such a line. Nothing when it is none, as one that was cut off.
std::optional<WatchRecord> ParseWatchLine(std::string_view line);

// What the lines are. Those that are none are passed over.
std::vector<WatchRecord> ReadWatchLines(std::string_view content);

}  // namespace brantel::host
