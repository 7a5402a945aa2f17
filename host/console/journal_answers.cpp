#include "host/console/journal_answers.h"

#include <algorithm>
#include <string>
#include <utility>

#include "host/console/console_pages.h"
#include "host/console/console_responses.h"

namespace brantel::host {

HttpResponse GetJournal(ConsoleContext& console, const ConsoleVisit& visit) {
  constexpr std::size_t kMostShown = 200;
  const std::string_view words = visit.query.Get("words");
  const bool is_failed_only = visit.query.Get("failed") == "1";
  const auto& journal = console.backend.Journal();
  PageValues values;
  std::size_t found = 0;
  for (std::size_t i = journal.size(); i > 0; --i) {
    const JournalEntry& entry = journal[i - 1];
    if (!HasWords(entry, words)) continue;
    const AttemptState state = PresentStateOf(entry, console.backend);
    const bool has_failed = state == AttemptState::kFailed || state == AttemptState::kCutOff;
    if (is_failed_only && !has_failed) continue;
    if (++found <= kMostShown) FillEntry(values.Add("entries"), entry, state);
  }
  values.Set("words", words)
      .SetFlag("is_failed_only", is_failed_only)
      .Set("found", std::to_string(found))
      .SetFlag("has_more", found > kMostShown);
  return ConsolePage(console, visit, "journal", "Journal", std::move(values));
}

HttpResponse GetJournalEntry(ConsoleContext& console, const ConsoleVisit& visit) {
  const auto& journal = console.backend.Journal();
  const auto entry = std::ranges::find(journal, visit.words[0], &JournalEntry::id);
  if (entry == journal.end()) return NotFound();
  PageValues values;
  FillEntry(values, *entry, PresentStateOf(*entry, console.backend));
  return ConsolePage(console, visit, "entry", "Alert", std::move(values));
}

}  // namespace brantel::host
