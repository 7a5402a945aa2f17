#include "host/commands/watch_board_win32.h"

#include <algorithm>
#include <utility>

namespace brantel::host {
namespace {

std::string DetailOf(const ItemSnapshot& item) {
  std::string detail = item.was_tried ? item.last.words : item.words;
  const auto add = [&](const std::string& words) {
    if (!words.empty()) detail += (detail.empty() ? "" : "; ") + words;
  };
  add(item.maintenance);
  add(item.hold.empty() ? "" : "nobody is told: " + item.hold);
  add(item.acknowledged_by.empty() ? "" : "acknowledged by " + item.acknowledged_by);
  if (item.open_alerts > 0) add("alerts under way: " + std::to_string(item.open_alerts));
  return detail;
}

WatchedRow RowOf(const ItemSnapshot& item) {
  const bool is_known = item.status != ItemStatus::kUnknown;
  return {.name = item.name,
          .kind = item.kind == ItemKind::kService ? "service" : "item",
          .status = item.status,
          .since = is_known ? ShortTimeText(item.since) : "",
          .detail = DetailOf(item),
          .can_be_acknowledged = item.status == ItemStatus::kDown && item.acknowledged_by.empty()};
}

}  // namespace

void WatchBoard::Show(std::vector<ItemSnapshot> items) {
  const CriticalSection::Lock lock(section_);
  items_ = std::move(items);
}

std::vector<WatchedRow> WatchBoard::Items() {
  const CriticalSection::Lock lock(section_);
  std::vector<WatchedRow> rows;
  for (const ItemSnapshot& item : items_)
    rows.push_back(RowOf(item));
  return rows;
}

// By the journal, which the watch reads within a second: so it counts also when the process is
// killed before that.
bool WatchBoard::Acknowledge(const std::string& item, const std::string& by) {
  if (!AcknowledgeInJournal(journal_, item, by)) return false;
  const CriticalSection::Lock lock(section_);
  const auto shown = std::ranges::find(items_, item, &ItemSnapshot::name);
  if (shown != items_.end()) shown->acknowledged_by = by;
  return true;
}

}  // namespace brantel::host
