#include "host/console/send_answers.h"

#include <string>
#include <utility>

#include "host/console/console_events.h"
#include "host/console/console_pages.h"
#include "host/console/console_responses.h"
#include "host/console/form_text.h"
#include "host/console/instance_answers.h"
#include "host/console/instance_directory.h"

namespace brantel::host {

HttpResponse PostSend(ConsoleContext& console, const ConsoleVisit& visit) {
  const auto file = FindInstance(console, visit.words[0]);
  if (!file || ClassOf(*file) == nullptr) return NotFound();
  const auto event = ParseAlertEvent(visit.form.Get("event"));
  if (!event) return ShowInstance(console, visit, *file, "There is no such event.");
  SendOrder order{
      .instance = file->name, .class_name = std::string(file->layout->class_name), .event = *event};
  for (const char* const letter : {"n", "C"}) {
    const auto value = visit.form.Get(std::string("variable-") + letter);
    if (!value.empty()) order.variables.Assign(std::string(letter) + "=" + std::string(value));
  }
  const auto id = console.backend.BeginSend(order);
  if (!id)
    return ShowInstance(console, visit, *file,
                        "Too many alerts are being sent already; wait a little.");
  return Redirect("/sends/" + *id);
}

HttpResponse GetSend(ConsoleContext& console, const ConsoleVisit& visit) {
  const auto progress = console.backend.ProgressOf(visit.words[0]);
  if (!progress) return NotFound();
  PageValues values;
  FillSend(values, *progress);
  values.Set("events_path", "/sends/" + EncodePercents(visit.words[0]) + "/events");
  values.SetFlag("refreshes", !progress->has_ended);
  return ConsolePage(console, visit, "send", "Test of " + progress->instance, std::move(values));
}

HttpResponse GetSendEvents(ConsoleContext& console, const ConsoleVisit& visit) {
  if (!console.backend.ProgressOf(visit.words[0])) return NotFound();
  return EventResponse(FollowSend(console.backend, visit.words[0],
                                  visit.request.Field("Last-Event-ID").value_or("")));
}

}  // namespace brantel::host
