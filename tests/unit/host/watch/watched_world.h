#pragma once

#include <cstdint>
#include <map>
#include <optional>
#include <random>
#include <set>
#include <string>
#include <vector>

#include "host/watch/watch.h"

namespace brantel::host {

// The process of a watch has been ended.
struct Killed {};

// A journal in memory, whose writing can be cut off.
class JournalOnPaper final : public RecordKeeper {
 public:
  void Keep(const WatchRecord& record) override;

  // What is left of it, and all that was ever written.
  [[nodiscard]] std::vector<WatchRecord> Records() const { return ReadWatchLines(content_); }
  [[nodiscard]] std::vector<WatchRecord> AllRecords() const { return ReadWatchLines(all_); }
  // Puts these in the place of what is left.
  void Replace(const std::vector<WatchRecord>& records);

  // Has the process end with the so-manieth record from now, before it is written, within it, or
  // behind it.
  enum class Cut { kBefore, kWithin, kBehind };
  void KillIn(int records, Cut cut) {
    left_ = records;
    cut_ = cut;
  }
  void LetLive() { left_ = 0; }

 private:
  void Append(const std::string& bytes);

  std::string content_;
  std::string all_;
  int left_ = 0;
  Cut cut_ = Cut::kBefore;
};

// An alert that has got out.
struct Delivery {
  WatchNumber decision = 0;
  std::string item{};
  std::string rule{};
  std::string instance{};
  AlertKind kind = AlertKind::kDown;
  WatchNumber incident = 0;
  std::vector<std::string> variables{};
  SteadyTime time{};
};

// Things that are up and down, instances that get through or do not, and a watch over them whose
// process may end at any moment and is then begun anew. Its clock is turned by hand.
class WatchedWorld {
 public:
  explicit WatchedWorld(WatchPlan plan, std::uint64_t seed = 1);

  // How a try to reach the item ends: up, down, or, where nothing is said, at its time limit.
  void Set(const std::string& item, std::optional<bool> is_up) { states_[item] = is_up; }
  // Whether what goes through the instance gets out.
  void SetInstance(const std::string& instance, bool gets_through) {
    if (gets_through)
      broken_.erase(instance);
    else
      broken_.insert(instance);
  }
  void SetAttemptTime(SteadyTime time) { attempt_time_ = time; }
  void SetResources(const std::string& instance, std::vector<std::string> resources) {
    resources_[instance] = std::move(resources);
  }
  // Whoever is told through the instance acknowledges it.
  void SetAcknowledging(const std::string& instance) { acknowledging_.insert(instance); }

  // Lets time go by.
  void Run(SteadyTime time);
  // Ends the process, in whatever it is, and begins another one some time later.
  void Restart(SteadyTime pause = std::chrono::seconds(5));
  void ChangePlan(WatchPlan plan);
  // The next process has this plan.
  void SetNextPlan(WatchPlan plan) { plan_ = std::move(plan); }
  void SetClock(std::chrono::milliseconds ahead) { wall_ahead_ = ahead; }
  void SetOffset(std::chrono::minutes offset) { offset_ = offset; }

  [[nodiscard]] Watch& watch() { return *watch_; }
  [[nodiscard]] JournalOnPaper& journal() { return journal_; }
  [[nodiscard]] Moment Now() const;
  [[nodiscard]] const std::vector<Delivery>& deliveries() const { return deliveries_; }
  // As "down web through Mail", in their order; and none of them again.
  std::vector<std::string> TakeDeliveries();
  [[nodiscard]] ItemSnapshot Item(const std::string& name) const;

  [[nodiscard]] int restarts() const { return restarts_; }
  [[nodiscard]] int probes() const { return probes_begun_; }
  [[nodiscard]] SteadyTime latest_probe() const { return latest_probe_; }
  [[nodiscard]] int most_probes() const { return most_probes_; }
  [[nodiscard]] int most_attempts() const { return most_attempts_; }

 private:
  struct ProbeUnderWay {
    std::uint64_t id = 0;
    std::string item{};
    ProbeResult result{};
    SteadyTime end{};
  };
  struct AttemptUnderWay {
    AttemptOrder order{};
    SteadyTime end{};
    bool gets_through = false;
  };

  void Begin();
  void Step();
  void Obey(const Watch::Orders& orders);
  void EndProbes();
  void EndAttempts();

  WatchPlan plan_;
  std::mt19937_64 chance_;
  JournalOnPaper journal_;
  std::optional<Watch> watch_;
  SteadyTime now_{};
  SteadyTime wall_ahead_{};
  std::chrono::minutes offset_{60};
  std::map<std::string, std::optional<bool>> states_;
  std::set<std::string> broken_;
  std::set<std::string> acknowledging_;
  std::map<std::string, std::vector<std::string>> resources_;
  SteadyTime attempt_time_{200};
  std::vector<ProbeUnderWay> probes_;
  std::vector<AttemptUnderWay> attempts_;
  std::vector<Delivery> deliveries_;
  std::size_t taken_ = 0;
  int restarts_ = 0;
  int probes_begun_ = 0;
  SteadyTime latest_probe_{};
  int most_probes_ = 0;
  int most_attempts_ = 0;
};

// A plan of items that are looked at every ten seconds, are down after two tries and up after two,
// and whose alerts go through one instance named Mail at once, and once.
WatchPlan PlanOf(const std::vector<std::string>& items);

}  // namespace brantel::host
