#include "host/watch/watch.h"

#include <algorithm>
#include <set>
#include <utility>

#include "host/watch/duration_text.h"
#include "host/watch/maintenance.h"

namespace brantel::host {
namespace {

constexpr std::chrono::seconds kClockTolerance{2};

AlertEvent EventOf(ItemKind kind, AlertKind alert) {
  const bool is_up = alert == AlertKind::kUp;
  if (kind == ItemKind::kService) return is_up ? kServiceUp : kServiceDown;
  return is_up ? kItemUp : kItemDown;
}

std::string AddressText(const ProbeRequest& probe) {
  return probe.host + (probe.port == 0 ? "" : ":" + std::to_string(probe.port));
}

std::string OffsetText(const PointInTime& time) {
  const std::string text = TimeText(time);
  constexpr std::size_t kOffsetSize = 6;
  return text.substr(text.size() - kOffsetSize);
}

}  // namespace

Watch::Watch(WatchPlan plan, WatchMemory memory, RecordKeeper& keeper,
             ResourceFinder find_resources, std::uint64_t seed, const Moment& now)
    : plan_(std::move(plan)),
      memory_(std::move(memory)),
      keeper_(keeper),
      schedule_(seed),
      outbox_(std::move(find_resources)),
      trials_(plan_.items.size(), Trials{.evidence_from = now.steady}),
      last_moment_(now) {
  schedule_.TakePlan(plan_, now.steady);
  ForgetOthers(now);
  CutOffAttempts(now);
}

void Watch::Keep(WatchEvent event, const Moment& now) {
  const WatchRecord record{now.wall, std::move(event)};
  keeper_.Keep(record);
  memory_.Apply(record, now.steady);
}

void Watch::ForgetOthers(const Moment& now) {
  std::vector<std::string> others;
  for (const auto& [name, item] : memory_.items()) {
    if (!PlaceOfItem(plan_, name)) others.push_back(name);
  }
  for (const std::string& name : others)
    Keep(ItemForgotten{name}, now);
}

// Whatever was under way has ended with the process that was here before.
void Watch::CutOffAttempts(const Moment& now) {
  std::vector<WatchNumber> cut_off;
  for (const auto& [id, open] : memory_.open()) {
    if (open.is_under_way) cut_off.push_back(id);
  }
  for (const WatchNumber id : cut_off)
    Keep(AttemptEnded{id, AlertEnd::kUncertain, false, "cut off by the end of the watch"}, now);
}

Watch::Orders Watch::Tick(const Moment& now) {
  NoteClock(now);
  for (const std::size_t place : DownItems())
    Decide(place, now);
  DropAlerts(now);

  Orders orders;
  for (const Decision& decision : outbox_.Begin(memory_, plan_, now.steady)) {
    const OpenDecision& open = memory_.open().at(decision.id);
    const int number = open.attempts + 1;
    Keep(AttemptBegun{decision.id, number, open.may_have_gone_out}, now);
    orders.attempts.push_back({decision, number, RuleNamed(plan_, decision.rule).time_limit});
  }
  for (const ProbeSchedule::Start& start : schedule_.Begin(now.steady)) {
    const WatchedItem& item = plan_.items[start.item];
    const ProbeOrder order{++last_probe_, item.name, item.probe, start.due};
    probes_[order.id] = {item.name, item.probe, now.steady};
    orders.probes.push_back(order);
  }
  return orders;
}

void Watch::NoteClock(const Moment& now) {
  const auto steady = now.steady - last_moment_.steady;
  const auto wall = now.wall.utc - last_moment_.wall.utc;
  const auto jump = std::chrono::round<std::chrono::seconds>(wall - steady);
  if (std::chrono::abs(wall - steady) > kClockTolerance)
    Note("the clock was set " + std::string(jump.count() > 0 ? "forward" : "back") + " by " +
             DurationText(std::chrono::abs(jump)),
         now);
  if (now.wall.offset != last_moment_.wall.offset)
    Note("the clock's offset went from " + OffsetText(last_moment_.wall) + " to " +
             OffsetText(now.wall),
         now);
  last_moment_ = now;
}

void Watch::TakeProbe(std::uint64_t id, const ProbeResult& result, const Moment& now) {
  const auto found = probes_.find(id);
  if (found == probes_.end()) return;
  const ProbeUnderWay probe = std::move(found->second);
  probes_.erase(found);
  const auto place = PlaceOfItem(plan_, probe.item);
  if (!place) return;
  schedule_.End(*place);
  // Of another address than the item has now it says nothing.
  if (plan_.items[*place].probe == probe.request) Count(*place, probe, result, now);
}

void Watch::Count(std::size_t place, const ProbeUnderWay& probe, const ProbeResult& result,
                  const Moment& now) {
  Trials& trials = trials_[place];
  trials.was_tried = true;
  trials.last = result;
  trials.last_time = now.wall;
  const WatchedItem& item = plan_.items[place];
  const ItemStatus status = memory_.ItemNamed(item.name).status;
  if (result.is_up) {
    trials.failed = 0;
    ++trials.succeeded;
    trials.has_success = true;
    trials.last_success = probe.begun;
    if (trials.succeeded >= item.up_after && status != ItemStatus::kUp) Rise(place, now);
  } else {
    trials.succeeded = 0;
    ++trials.failed;
    if (probe.begun >= trials.evidence_from) ++trials.fresh_failures;
    if (trials.failed >= item.down_after && status != ItemStatus::kDown) Fall(place, now);
  }
}

void Watch::Fall(std::size_t place, const Moment& now) {
  const WatchedItem& item = plan_.items[place];
  Keep(
      StatusChange{
          item.name, ItemStatus::kDown, trials_[place].last.words, memory_.next_number(), {}},
      now);
  AskAgain(place, now.steady);
  // Its own failures have just been counted.
  trials_[place].fresh_failures = item.down_after;
}

void Watch::Rise(std::size_t place, const Moment& now) {
  const std::string& name = plan_.items[place].name;
  const std::string& words = trials_[place].last.words;
  const bool was_down = IsDown(place);
  const WatchNumber incident = memory_.ItemNamed(name).incident;
  Keep(StatusChange{name, ItemStatus::kUp, words, incident,
                    Ups(place, memory_.next_number(), words, now)},
       now);
  if (!was_down) return;
  // What lies behind it may have been down because of it alone.
  for (const std::size_t other : DownItems()) {
    const auto dependencies = AllDependencies(plan_, other);
    if (std::ranges::find(dependencies, place) != dependencies.end()) AskAgain(other, now.steady);
  }
}

// Has an alert wait until it is clear whether the item is down by itself.
void Watch::AskAgain(std::size_t place, SteadyTime from) {
  trials_[place].evidence_from = from;
  trials_[place].fresh_failures = 0;
  for (const std::size_t dependency : AllDependencies(plan_, place))
    schedule_.Hasten(dependency);
}

bool Watch::IsDown(std::size_t place) const {
  return memory_.ItemNamed(plan_.items[place].name).status == ItemStatus::kDown;
}

std::vector<std::size_t> Watch::DownItems() const {
  std::vector<std::size_t> places;
  for (const auto& [name, item] : memory_.items()) {
    if (item.status == ItemStatus::kDown) places.push_back(*PlaceOfItem(plan_, name));
  }
  return places;
}

void Watch::Decide(std::size_t place, const Moment& now) {
  std::vector<Decision> due = DueAlerts(place, now);
  if (due.empty()) return;
  const Hold hold = HoldOf(place, now);
  Trials& trials = trials_[place];
  if (hold.is_told && hold.words != trials.noted_hold) {
    trials.noted_hold = hold.words;
    Keep(WatchNote{plan_.items[place].name, "nobody is told: " + hold.words}, now);
  }
  if (hold) return;
  trials.noted_hold.clear();
  Keep(AlertsDecided{std::move(due)}, now);
}

std::vector<Decision> Watch::DueAlerts(std::size_t place, const Moment& now) const {
  const ItemMemory& item = memory_.ItemNamed(plan_.items[place].name);
  std::vector<Decision> due;
  if (!item.acknowledged_by.empty()) return due;
  for (const std::size_t alert : plan_.items[place].alerts) {
    const AlertRule& rule = plan_.alerts[alert];
    for (const std::string& instance : rule.instances) {
      const Channel channel(rule.name, instance);
      const auto told = item.channels.find(channel);
      const bool is_first = told == item.channels.end();
      const bool is_due = is_first ? now.steady >= item.changed + rule.delay
                                   : !told->second.is_open && rule.repeat.count() > 0 &&
                                         now.steady >= told->second.told + rule.repeat;
      if (!is_due) continue;
      const bool is_known = !is_first && !told->second.is_given_up;
      due.push_back(MakeDecision(place, channel, is_known ? AlertKind::kRepeat : AlertKind::kDown,
                                 item.changed_at, item.words));
      due.back().id = memory_.next_number() + static_cast<WatchNumber>(due.size()) - 1;
    }
  }
  return due;
}

// What is told of the item's return: whoever was told of its fall, or will be.
std::vector<Decision> Watch::Ups(std::size_t place, WatchNumber first, const std::string& words,
                                 const Moment& now) const {
  std::vector<Decision> ups;
  for (const auto& [channel, told] : memory_.ItemNamed(plan_.items[place].name).channels) {
    if (told.is_given_up || !RuleNamed(plan_, channel.first).tells_up) continue;
    ups.push_back(MakeDecision(place, channel, AlertKind::kUp, now.wall, words));
    ups.back().id = first + static_cast<WatchNumber>(ups.size()) - 1;
  }
  return ups;
}

Decision Watch::MakeDecision(std::size_t place, const Channel& channel, AlertKind kind,
                             const PointInTime& time, const std::string& words) const {
  const WatchedItem& item = plan_.items[place];
  const std::string status(
      StatusName(kind == AlertKind::kUp ? ItemStatus::kUp : ItemStatus::kDown));
  return {.item = item.name,
          .rule = channel.first,
          .instance = channel.second,
          .kind = kind,
          .incident = memory_.ItemNamed(item.name).incident,
          .event = EventOf(item.kind, kind),
          .variables = {"n=" + item.name, "d=" + item.device,
                        "C=" + (item.code.empty() ? status + ", " + words : item.code),
                        "a=" + AddressText(item.probe), "u=" + status, "t=" + ShortTimeText(time),
                        "w=" + words}};
}

Watch::Hold Watch::HoldOf(std::size_t place, const Moment& now) const {
  const std::string maintenance = MaintenanceOf(plan_, place, now.wall);
  if (!maintenance.empty()) return {"it is " + maintenance, true};
  const auto dependencies = AllDependencies(plan_, place);
  for (const std::size_t dependency : dependencies) {
    if (IsDown(dependency)) return {plan_.items[dependency].name + " is down", true};
  }
  const Trials& trials = trials_[place];
  if (trials.succeeded > 0) return {"it may be up again"};
  if (trials.fresh_failures < plan_.items[place].down_after) return {"it is looked at once more"};
  for (const std::size_t dependency : dependencies) {
    const Trials& other = trials_[dependency];
    if (other.failed > 0 || !other.has_success || other.last_success < trials.evidence_from)
      return {plan_.items[dependency].name + " is looked at first"};
  }
  return {};
}

void Watch::DropAlerts(const Moment& now) {
  std::vector<AlertDropped> dropped;
  for (const auto& [id, open] : memory_.open()) {
    std::string reason = open.is_under_way ? "" : ReasonToDrop(open, now);
    if (reason.empty()) continue;
    dropped.push_back({id, std::move(reason)});
    if (open.decision.kind == AlertKind::kDown) AddUpsOf(open.decision, dropped);
  }
  // The latest first: there is no moment in which an up is left without its down.
  // NOLINTNEXTLINE(modernize-loop-convert): clang++ 14 cannot compile the library's reverse_view
  for (auto drop = dropped.rbegin(); drop != dropped.rend(); ++drop)
    Keep(*drop, now);
}

void Watch::AddUpsOf(const Decision& down, std::vector<AlertDropped>& dropped) const {
  for (const auto& [id, open] : memory_.open()) {
    const Decision& other = open.decision;
    if (other.kind == AlertKind::kUp && other.incident == down.incident &&
        other.rule == down.rule && other.instance == down.instance)
      dropped.push_back({id, "nobody was told that it was down"});
  }
}

std::string Watch::ReasonToDrop(const OpenDecision& open, const Moment& now) const {
  const Decision& decision = open.decision;
  const AlertRule& rule = RuleNamed(plan_, decision.rule);
  if (open.attempts > 0 && now.steady >= open.decided + rule.give_up)
    return "given up after " + std::to_string(open.attempts) + " attempts: " + open.last_words;
  if (decision.kind != AlertKind::kRepeat) return "";
  const ItemMemory& item = memory_.ItemNamed(decision.item);
  if (item.incident != decision.incident) return "it is not down any more";
  if (!item.acknowledged_by.empty()) return "it has been acknowledged";
  const auto place = PlaceOfItem(plan_, decision.item);
  const std::string maintenance = place ? MaintenanceOf(plan_, *place, now.wall) : "";
  return maintenance.empty() ? "" : "it is " + maintenance;
}

void Watch::TakeAttempt(WatchNumber decision, const AttemptResult& result, const Moment& now) {
  outbox_.End(decision);
  Keep(AttemptEnded{decision, result.end, result.is_acknowledged, result.words}, now);
}

bool Watch::Acknowledge(const std::string& item, const std::string& by, const Moment& now) {
  const ItemMemory& known = memory_.ItemNamed(item);
  if (known.incident == 0 || !known.acknowledged_by.empty()) return false;
  Keep(Acknowledgement{item, known.incident, by}, now);
  return true;
}

void Watch::TakeForeign(const WatchRecord& record, const Moment& now) {
  if (std::holds_alternative<Acknowledgement>(record.event)) memory_.Apply(record, now.steady);
}

void Watch::ChangePlan(WatchPlan plan, const Moment& now) {
  std::vector<Trials> trials;
  for (const WatchedItem& item : plan.items) {
    const auto place = PlaceOfItem(plan_, item.name);
    const bool is_same = place && plan_.items[*place].probe == item.probe;
    trials.push_back(is_same ? trials_[*place] : Trials{.evidence_from = now.steady});
  }
  trials_ = std::move(trials);
  plan_ = std::move(plan);
  schedule_.TakePlan(plan_, now.steady);
  ForgetOthers(now);
  std::erase_if(probes_, [&](const auto& probe) { return !PlaceOfItem(plan_, probe.second.item); });
}

std::vector<ItemSnapshot> Watch::Items(const Moment& now) const {
  std::map<std::string, int> open_alerts;
  for (const auto& [id, open] : memory_.open())
    ++open_alerts[open.decision.item];
  std::vector<ItemSnapshot> items;
  for (std::size_t place = 0; place < plan_.items.size(); ++place) {
    const WatchedItem& item = plan_.items[place];
    const ItemMemory& known = memory_.ItemNamed(item.name);
    const Trials& trials = trials_[place];
    items.push_back({.name = item.name,
                     .kind = item.kind,
                     .device = item.device,
                     .status = known.status,
                     .since = known.changed_at,
                     .words = known.words,
                     .was_tried = trials.was_tried,
                     .last = trials.last,
                     .last_time = trials.last_time,
                     .hold = IsDown(place) ? HoldOf(place, now).words : "",
                     .acknowledged_by = known.acknowledged_by,
                     .maintenance = MaintenanceOf(plan_, place, now.wall),
                     .open_alerts = open_alerts[item.name]});
  }
  return items;
}

}  // namespace brantel::host
