#pragma once

#include <cstddef>
#include <cstdint>
#include <map>
#include <string>
#include <vector>

#include "host/watch/moment.h"
#include "host/watch/outbox.h"
#include "host/watch/probe_result.h"
#include "host/watch/probe_schedule.h"
#include "host/watch/watch_memory.h"
#include "host/watch/watch_plan.h"
#include "host/watch/watch_record.h"

namespace brantel::host {

// Keeps what a watch does.
class RecordKeeper {
 public:
  virtual ~RecordKeeper() = default;

  // On return the record survives the end of the process.
  virtual void Keep(const WatchRecord& record) = 0;
};

// That an item is to be looked at.
struct ProbeOrder {
  std::uint64_t id = 0;
  std::string item{};
  ProbeRequest request{};
  SteadyTime due{};
};

// That an alert is to be delivered.
struct AttemptOrder {
  Decision decision{};
  int number = 0;
  SteadyTime time_limit{};
};

struct AttemptResult {
  AlertEnd end = AlertEnd::kFailed;
  bool is_acknowledged = false;  // by whoever was told
  std::string words{};
};

// How it stands with an item.
struct ItemSnapshot {
  std::string name{};
  ItemKind kind = ItemKind::kItem;
  std::string device{};
  ItemStatus status = ItemStatus::kUnknown;
  PointInTime since{};  // when that was found out; meaningless while it is not known
  std::string words{};  // why it counts as that
  bool was_tried = false;
  ProbeResult last{};  // what the last try came to
  PointInTime last_time{};
  std::string hold{};  // why nobody is told that it is down; empty where somebody is
  std::string acknowledged_by{};
  std::string maintenance{};  // in which it is now
  int open_alerts = 0;        // that have not got through yet
};

// Watches what a plan names: decides when what is looked at, what that says of an item, who is told
// of it, and when what did not get through is tried again. It does nothing of that itself, and
// knows no time but what it is told. Whatever it goes by is in its memory, and each change of that
// is kept before anything is done because of it.
class Watch {
 public:
  // The memory is what the journal says. `keeper` must outlive the object.
  Watch(WatchPlan plan, WatchMemory memory, RecordKeeper& keeper, ResourceFinder find_resources,
        std::uint64_t seed, const Moment& now);

  struct Orders {
    std::vector<ProbeOrder> probes{};
    std::vector<AttemptOrder> attempts{};
  };

  // What is to be done now. To be asked whenever something was taken or Next() has come.
  Orders Tick(const Moment& now);
  // What is under way only, to end a watch: nothing new is begun by it.
  [[nodiscard]] bool has_attempts() const { return !outbox_.is_idle(); }

  // In a second at the latest.
  [[nodiscard]] SteadyTime Next(const Moment& now) const { return schedule_.Next(now.steady); }

  void TakeProbe(std::uint64_t id, const ProbeResult& result, const Moment& now);
  void TakeAttempt(WatchNumber decision, const AttemptResult& result, const Moment& now);

  // False where the item is not down, or was acknowledged before.
  bool Acknowledge(const std::string& item, const std::string& by, const Moment& now);
  // A record that another process has put into the journal. Only acknowledgements count.
  void TakeForeign(const WatchRecord& record, const Moment& now);

  void ChangePlan(WatchPlan plan, const Moment& now);
  void Note(const std::string& words, const Moment& now) { Keep(WatchNote{{}, words}, now); }

  [[nodiscard]] std::vector<ItemSnapshot> Items(const Moment& now) const;
  [[nodiscard]] const WatchMemory& memory() const { return memory_; }
  [[nodiscard]] const WatchPlan& plan() const { return plan_; }

 private:
  // What is found out about an item in this process.
  struct Trials {
    int failed = 0;     // in a row
    int succeeded = 0;  // in a row
    bool was_tried = false;
    ProbeResult last{};
    PointInTime last_time{};
    // Of what an alert needs: that the item failed since then, and what it depends on did not.
    SteadyTime evidence_from{};
    int fresh_failures = 0;
    SteadyTime last_success{};  // when the last try that succeeded was begun
    bool has_success = false;
    std::string noted_hold{};
  };

  struct ProbeUnderWay {
    std::string item{};
    ProbeRequest request{};
    SteadyTime begun{};
  };

  struct Hold {
    std::string words{};
    bool is_told = false;  // worth a note

    explicit operator bool() const { return !words.empty(); }
  };

  void Keep(WatchEvent event, const Moment& now);
  void ForgetOthers(const Moment& now);
  void CutOffAttempts(const Moment& now);
  void NoteClock(const Moment& now);
  void Count(std::size_t place, const ProbeUnderWay& probe, const ProbeResult& result,
             const Moment& now);
  void Fall(std::size_t place, const Moment& now);
  void Rise(std::size_t place, const Moment& now);
  void AskAgain(std::size_t place, SteadyTime from);
  void Decide(std::size_t place, const Moment& now);
  [[nodiscard]] std::vector<Decision> DueAlerts(std::size_t place, const Moment& now) const;
  [[nodiscard]] std::vector<Decision> Ups(std::size_t place, WatchNumber first,
                                          const std::string& words, const Moment& now) const;
  [[nodiscard]] Decision MakeDecision(std::size_t place, const Channel& channel, AlertKind kind,
                                      const PointInTime& time, const std::string& words) const;
  [[nodiscard]] Hold HoldOf(std::size_t place, const Moment& now) const;
  void DropAlerts(const Moment& now);
  void AddUpsOf(const Decision& down, std::vector<AlertDropped>& dropped) const;
  [[nodiscard]] std::string ReasonToDrop(const OpenDecision& open, const Moment& now) const;
  [[nodiscard]] bool IsDown(std::size_t place) const;
  [[nodiscard]] std::vector<std::size_t> DownItems() const;

  WatchPlan plan_;
  WatchMemory memory_;
  RecordKeeper& keeper_;
  ProbeSchedule schedule_;
  Outbox outbox_;
  std::vector<Trials> trials_;  // of each item
  std::map<std::uint64_t, ProbeUnderWay> probes_;
  std::uint64_t last_probe_ = 0;
  Moment last_moment_;
};

}  // namespace brantel::host
