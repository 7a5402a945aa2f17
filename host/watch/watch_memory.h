#pragma once

#include <map>
#include <string>
#include <utility>
#include <vector>

#include "host/watch/moment.h"
#include "host/watch/watch_record.h"

namespace brantel::host {

// Through which rule and instance it is told.
using Channel = std::pair<std::string, std::string>;

// What has been told of an item's fall through a channel. There is none before anything is decided.
struct ChannelMemory {
  Decision last{};
  bool is_open = false;      // not given yet, nor given up
  bool is_given_up = false;  // nobody has been told through it
  SteadyTime told{};         // when it was last told
  PointInTime told_at{};     // the same

  friend bool operator==(const ChannelMemory&, const ChannelMemory&) = default;
};

// What is known of an item.
struct ItemMemory {
  ItemStatus status = ItemStatus::kUnknown;
  std::string words{};
  SteadyTime changed{};
  PointInTime changed_at{};
  WatchNumber incident = 0;  // while it is down
  std::string acknowledged_by{};
  std::map<Channel, ChannelMemory> channels{};  // of that incident

  friend bool operator==(const ItemMemory&, const ItemMemory&) = default;
};

// A decision that has no end yet.
struct OpenDecision {
  Decision decision{};
  SteadyTime decided{};
  PointInTime decided_at{};
  int attempts = 0;
  bool is_under_way = false;
  bool may_have_gone_out = false;
  std::string last_words{};  // of the last attempt that ended
  SteadyTime ended{};        // when that was
  PointInTime ended_at{};

  friend bool operator==(const OpenDecision&, const OpenDecision&) = default;
};

// All that a watch goes by from one moment to the next. It consists of what its journal says, and
// is therefore the same again after whatever may have ended the process.
class WatchMemory {
 public:
  // Takes the next record, which was made at this time.
  void Apply(const WatchRecord& record, SteadyTime time);

  [[nodiscard]] const std::map<std::string, ItemMemory>& items() const { return items_; }
  // What is known of the item; nothing is of one that is not named.
  [[nodiscard]] const ItemMemory& ItemNamed(const std::string& name) const;
  // By their numbers, and so in the order in which they were made.
  [[nodiscard]] const std::map<WatchNumber, OpenDecision>& open() const { return open_; }
  [[nodiscard]] WatchNumber next_number() const { return next_number_; }

  // Records that say the same, for a journal that has grown.
  [[nodiscard]] std::vector<WatchRecord> Records(const PointInTime& now) const;

  friend bool operator==(const WatchMemory&, const WatchMemory&) = default;

 private:
  struct Taker;

  ChannelMemory* ChannelOf(const Decision& decision);
  void TakeNumber(WatchNumber number);
  void Add(const Decision& decision, SteadyTime time, const PointInTime& wall);

  std::map<std::string, ItemMemory> items_;
  std::map<WatchNumber, OpenDecision> open_;
  WatchNumber next_number_ = 1;
};

// What a journal says. It was written by the clock on the wall: what it says of the future has been
// just now.
WatchMemory RememberedBy(const std::vector<WatchRecord>& records, const Moment& now);

}  // namespace brantel::host
