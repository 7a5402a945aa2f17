#include "host/console/overview_answers.h"

#include <algorithm>
#include <utility>

#include "host/checks/diagnosis.h"
#include "host/console/console_events.h"
#include "host/console/console_files.h"
#include "host/console/console_pages.h"
#include "host/console/console_responses.h"
#include "host/console/instance_directory.h"
#include "module/class_descriptions.h"

namespace brantel::host {

HttpResponse GetOverview(ConsoleContext& console, const ConsoleVisit& visit) {
  constexpr std::size_t kRecent = 8;
  PageValues values;
  values.Set("notice", console.options.notice)
      .SetFlag("has_notice", !console.options.notice.empty());
  FillInstances(console, values);
  const auto& journal = console.backend.Journal();
  for (std::size_t i = 0; i < std::min(kRecent, journal.size()); ++i) {
    const JournalEntry& entry = journal[journal.size() - 1 - i];
    FillEntry(values.Add("entries"), entry, PresentStateOf(entry, console.backend));
  }
  values.SetFlag("has_watched", console.watched != nullptr);
  if (console.watched != nullptr) {
    for (const WatchedRow& item : console.watched->Items())
      FillWatched(values.Add("watched"), item);
  }
  return ConsolePage(console, visit, "overview", "Overview", std::move(values));
}

HttpResponse GetChanges(ConsoleContext& console, const ConsoleVisit& /*visit*/) {
  return EventResponse(FollowChanges(console.backend, console.watched));
}

HttpResponse GetClasses(ConsoleContext& console, const ConsoleVisit& visit) {
  PageValues values;
  for (const ClassDescription* notifier_class : ClassDescriptions()) {
    PageValues& item = values.Add("classes");
    FillClass(item, *notifier_class);
    FillDiagnosis(item, DiagnoseClass(*notifier_class, console.backend.system(), Reach::kOffline));
  }
  return ConsolePage(console, visit, "classes", "Classes", std::move(values));
}

HttpResponse GetHelp(ConsoleContext& console, const ConsoleVisit& visit) {
  const ClassDescription* const notifier_class = FindClassDescription(visit.words[0]);
  if (notifier_class == nullptr) return NotFound();
  PageValues values;
  FillClass(values, *notifier_class);
  return ConsolePage(console, visit, "help", visit.words[0], std::move(values));
}

HttpResponse GetConsoleFile(ConsoleContext& /*console*/, const ConsoleVisit& visit) {
  const ConsoleFile* const file = FindConsoleFile(visit.words[0]);
  if (file == nullptr) return NotFound();
  return {.fields = {{"Content-Type", std::string(file->type)},
                     {"Cache-Control", "private, max-age=600"}},
          .body = std::string(file->content)};
}

}  // namespace brantel::host
