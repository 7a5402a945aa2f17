#include "host/console/watched_answers.h"

#include <algorithm>
#include <cstddef>
#include <optional>
#include <string>
#include <string_view>
#include <utility>

#include "host/console/console_pages.h"
#include "host/console/console_responses.h"
#include "host/text/control_characters.h"

namespace brantel::host {
namespace {

constexpr std::size_t kMostNameBytes = 400;  // a hundred characters

std::optional<WatchedRow> FindWatched(ConsoleContext& console, std::string_view name) {
  if (console.watched == nullptr) return std::nullopt;
  auto items = console.watched->Items();
  const auto found = std::ranges::find(items, name, &WatchedRow::name);
  if (found == items.end()) return std::nullopt;
  return std::move(*found);
}

// Its page, with what keeps from acknowledging it; empty where nothing does.
HttpResponse ShowWatched(ConsoleContext& console, const ConsoleVisit& visit, const WatchedRow& item,
                         const std::string& complaint) {
  PageValues values;
  FillWatched(values, item);
  values.Set("complaint", complaint).SetFlag("has_complaint", !complaint.empty());
  return ConsolePage(console, visit, "acknowledge", item.name, std::move(values),
                     complaint.empty() ? 200 : 409);
}

}  // namespace

HttpResponse GetAcknowledge(ConsoleContext& console, const ConsoleVisit& visit) {
  const auto item = FindWatched(console, visit.query.Get("item"));
  return item ? ShowWatched(console, visit, *item, "") : NotFound();
}

HttpResponse PostAcknowledge(ConsoleContext& console, const ConsoleVisit& visit) {
  const auto item = FindWatched(console, visit.form.Get("item"));
  if (!item) return NotFound();
  const std::string by = BlankControlCharacters(visit.form.Get("by"));
  if (by.find_first_not_of(' ') == std::string::npos)
    return ShowWatched(console, visit, *item, "Your name is missing.");
  if (by.size() > kMostNameBytes)
    return ShowWatched(console, visit, *item, "This name is too long.");
  if (!console.watched->Acknowledge(item->name, by)) {
    return ShowWatched(console, visit, *item,
                       "It is not down any more, or somebody has acknowledged it already.");
  }
  return Redirect("/");
}

}  // namespace brantel::host
