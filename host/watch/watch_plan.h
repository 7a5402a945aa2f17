#pragma once

#include <array>
#include <chrono>
#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <vector>

namespace brantel::host {

enum class ProbeKind { kTcp, kHttp, kIcmp };

// How it is found out whether something is up. Texts are UTF-8.
struct ProbeRequest {
  ProbeKind kind = ProbeKind::kTcp;
  std::string host{};      // a name or an address
  std::uint16_t port = 0;  // none for ICMP
  std::string target{};    // of HTTP: path and query
  int status = 0;          // that HTTP has to answer
  std::string text{};      // that the answer has to hold; empty for any
  std::chrono::milliseconds timeout{};

  friend bool operator==(const ProbeRequest&, const ProbeRequest&) = default;
};

// Which bits of the trigger word an alert has.
enum class ItemKind { kItem, kService };

// What is watched.
struct WatchedItem {
  std::string name{};
  ItemKind kind = ItemKind::kItem;
  std::string device{};  // on which it is, for the texts of alerts
  std::string code{};    // what those texts have for "%C"; empty for words about what happened
  ProbeRequest probe{};
  std::chrono::milliseconds interval{};
  int down_after = 0;  // failed tries
  int up_after = 0;    // tries that succeeded
  std::vector<std::size_t> depends_on{};
  std::vector<std::size_t> alerts{};

  friend bool operator==(const WatchedItem&, const WatchedItem&) = default;
};

// When and through what it is told that an item is down, and up again.
struct AlertRule {
  std::string name{};
  std::vector<std::string> instances{};  // by their files' names
  bool tells_up = true;
  std::chrono::milliseconds delay{};   // for which it has to have been down
  std::chrono::milliseconds repeat{};  // between two; 0 for once
  std::chrono::milliseconds time_limit{std::chrono::minutes(10)};  // of an attempt
  std::chrono::milliseconds retry{std::chrono::seconds(30)};       // after a first failure
  std::chrono::milliseconds retry_most{std::chrono::minutes(15)};
  std::chrono::milliseconds give_up{std::chrono::days(1)};  // after which it is tried no more

  friend bool operator==(const AlertRule&, const AlertRule&) = default;
};

// The rule that counts for decisions whose own is not in the plan any more.
inline const AlertRule kOwnRuleIsGone{};

// Times in which nobody is told that something is down. By the clocks of the place.
struct MaintenanceTime {
  std::string name{};
  std::vector<std::size_t> items{};   // empty: all
  std::array<bool, 7> days{};         // Sunday first, on which it begins; none where it is once
  std::chrono::minutes from{};        // since midnight
  std::chrono::minutes to{};          // of the next day, where it is not later than `from`
  std::chrono::milliseconds begin{};  // since 1970, where it is once
  std::chrono::milliseconds end{};
  bool is_once = false;

  friend bool operator==(const MaintenanceTime&, const MaintenanceTime&) = default;
};

// What a file says is to be watched.
struct WatchPlan {
  std::string instances{};  // the folder of instance files, as it is written; empty: the file's own
  std::string journal{};    // likewise, of the watch; empty: beside the file
  int parallel = 0;         // probes at once
  int jitter = 0;           // in hundredths of the interval, either way
  std::vector<WatchedItem> items{};
  std::vector<AlertRule> alerts{};
  std::vector<MaintenanceTime> maintenance{};

  friend bool operator==(const WatchPlan&, const WatchPlan&) = default;
};

// The item's place in the plan, if there is one of this name.
std::optional<std::size_t> PlaceOfItem(const WatchPlan& plan, const std::string& name);

const AlertRule& RuleNamed(const WatchPlan& plan, const std::string& name);

// All that the item depends on, directly or through others.
std::vector<std::size_t> AllDependencies(const WatchPlan& plan, std::size_t item);

}  // namespace brantel::host
