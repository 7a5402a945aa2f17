#include "host/commands/watch_board_win32.h"

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
          .state = std::string(StatusName(item.status)),
          .is_up = item.status == ItemStatus::kUp,
          .since = is_known ? ShortTimeText(item.since) : "",
          .detail = DetailOf(item)};
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

}  // namespace brantel::host
