#include "host/watch/watch_memory.h"

#include <algorithm>

namespace brantel::host {
namespace {

const ItemMemory kNothingKnown{};

WatchEvent ClosingEvent(const ChannelMemory& channel) {
  if (channel.is_given_up) return AlertDropped{channel.last.id, {}};
  return AttemptEnded{channel.last.id, AlertEnd::kDelivered, false, {}};
}

}  // namespace

// Takes one event.
struct WatchMemory::Taker {
  void operator()(const StatusChange& change) const {
    ItemMemory& item = memory.items_[change.item];
    for (const Decision& decision : change.decisions)
      memory.Add(decision, time, wall);
    item = {.status = change.status,
            .words = change.words,
            .changed = time,
            .changed_at = wall,
            .incident = change.status == ItemStatus::kDown ? change.incident : 0};
    memory.TakeNumber(change.incident);
  }

  void operator()(const AlertsDecided& decided) const {
    for (const Decision& decision : decided.decisions) {
      memory.Add(decision, time, wall);
      // Channels are of falls alone.
      if (decision.kind == AlertKind::kUp) continue;
      const auto item = memory.items_.find(decision.item);
      if (item == memory.items_.end() || item->second.incident != decision.incident) continue;
      ChannelMemory& channel = item->second.channels[{decision.rule, decision.instance}];
      if (channel.last.id < decision.id) channel = {.last = decision, .is_open = true};
    }
  }

  void operator()(const AttemptBegun& begun) const {
    const auto found = memory.open_.find(begun.decision);
    if (found == memory.open_.end()) return;
    const OpenDecision& open = found->second;
    found->second = {.decision = open.decision,
                     .decided = open.decided,
                     .decided_at = open.decided_at,
                     .attempts = begun.number,
                     .is_under_way = true,
                     .may_have_gone_out = begun.may_be_doubled};
  }

  void operator()(const AttemptEnded& ended) const {
    const auto found = memory.open_.find(ended.decision);
    if (found == memory.open_.end()) return;
    OpenDecision& open = found->second;
    open.is_under_way = false;
    open.last_words = ended.words;
    open.ended = time;
    open.ended_at = wall;
    if (ended.end == AlertEnd::kUncertain) open.may_have_gone_out = true;
    if (ended.is_acknowledged) Acknowledge(open.decision);
    if (ended.end == AlertEnd::kDelivered) Close(found);
  }

  void operator()(const AlertDropped& dropped) const {
    const auto found = memory.open_.find(dropped.decision);
    if (found == memory.open_.end()) return;
    ChannelMemory* const channel = memory.ChannelOf(found->second.decision);
    if (channel != nullptr && channel->last.kind == AlertKind::kDown) channel->is_given_up = true;
    Close(found);
  }

  void operator()(const Acknowledgement& acknowledgement) const {
    const auto item = memory.items_.find(acknowledgement.item);
    if (item != memory.items_.end() && item->second.incident != 0 &&
        item->second.incident == acknowledgement.incident)
      item->second.acknowledged_by = acknowledgement.by;
  }

  void operator()(const ItemForgotten& forgotten) const { memory.items_.erase(forgotten.item); }
  void operator()(const NumbersTaken& taken) const { memory.TakeNumber(taken.next - 1); }
  void operator()(const WatchNote&) const {}

  void Acknowledge(const Decision& decision) const {
    const auto item = memory.items_.find(decision.item);
    if (item != memory.items_.end() && item->second.incident == decision.incident)
      item->second.acknowledged_by = decision.instance;
  }

  void Close(std::map<WatchNumber, OpenDecision>::iterator open) const {
    if (ChannelMemory* const channel = memory.ChannelOf(open->second.decision)) {
      channel->is_open = false;
      channel->told = time;
      channel->told_at = wall;
    }
    memory.open_.erase(open);
  }

  WatchMemory& memory;
  SteadyTime time;
  PointInTime wall;
};

void WatchMemory::Apply(const WatchRecord& record, SteadyTime time) {
  std::visit(Taker{*this, time, record.time}, record.event);
}

const ItemMemory& WatchMemory::ItemNamed(const std::string& name) const {
  const auto found = items_.find(name);
  return found == items_.end() ? kNothingKnown : found->second;
}

// The channel of which this decision is the last.
ChannelMemory* WatchMemory::ChannelOf(const Decision& decision) {
  const auto item = items_.find(decision.item);
  if (item == items_.end()) return nullptr;
  const auto channel = item->second.channels.find({decision.rule, decision.instance});
  if (channel == item->second.channels.end() || channel->second.last.id != decision.id)
    return nullptr;
  return &channel->second;
}

void WatchMemory::TakeNumber(WatchNumber number) {
  next_number_ = std::max(next_number_, number + 1);
}

void WatchMemory::Add(const Decision& decision, SteadyTime time, const PointInTime& wall) {
  TakeNumber(decision.id);
  open_[decision.id] = {.decision = decision, .decided = time, .decided_at = wall};
}

std::vector<WatchRecord> WatchMemory::Records(const PointInTime& now) const {
  std::vector<WatchRecord> records;
  for (const auto& [name, item] : items_) {
    records.push_back(
        {item.changed_at, StatusChange{name, item.status, item.words, item.incident, {}}});
    for (const auto& [place, channel] : item.channels) {
      if (channel.is_open) continue;
      records.push_back({channel.told_at, AlertsDecided{{channel.last}}});
      records.push_back({channel.told_at, ClosingEvent(channel)});
    }
    if (!item.acknowledged_by.empty())
      records.push_back({now, Acknowledgement{name, item.incident, item.acknowledged_by}});
  }
  for (const auto& [id, open] : open_) {
    records.push_back({open.decided_at, AlertsDecided{{open.decision}}});
    if (open.attempts == 0) continue;
    records.push_back({open.ended_at, AttemptBegun{id, open.attempts, open.may_have_gone_out}});
    if (!open.is_under_way)
      records.push_back(
          {open.ended_at, AttemptEnded{id, AlertEnd::kFailed, false, open.last_words}});
  }
  records.push_back({now, NumbersTaken{next_number_}});
  return records;
}

WatchMemory RememberedBy(const std::vector<WatchRecord>& records, const Moment& now) {
  WatchMemory memory;
  for (const WatchRecord& record : records) {
    const SteadyTime ago = now.wall.utc - record.time.utc;
    memory.Apply(record, now.steady - std::max(ago, SteadyTime(0)));
  }
  return memory;
}

}  // namespace brantel::host
