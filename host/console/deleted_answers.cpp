#include "host/console/deleted_answers.h"

#include <algorithm>
#include <string>

#include "host/console/console_cookies.h"
#include "host/console/console_responses.h"
#include "host/console/instance_answers.h"
#include "host/console/instance_directory.h"

namespace brantel::host {
namespace {

PageValues ValuesOf(const FileAside& file) {
  PageValues values;
  values.Set("name", file.name).Set("aside_path", "/deleted/" + file.id);
  return values;
}

}  // namespace

HttpResponse PostDelete(ConsoleContext& console, const ConsoleVisit& visit) {
  const auto file = FindInstance(console, visit.words[0]);
  if (!file) return NotFound();
  const auto id = console.shelf.MoveAside(file->name);
  if (!id)
    return ShowInstance(console, visit, *file,
                        "It could not be deleted; somebody may be using it.");
  HttpResponse response = Redirect("/deleted/" + *id);
  response.fields.push_back(SetCookie(kDeletedCookie, *id));
  return response;
}

HttpResponse GetDeleted(ConsoleContext& console, const ConsoleVisit& visit) {
  const auto file = console.shelf.Find(visit.words[0]);
  if (!file) return NotFound();
  return ConsolePage(console, visit, "deleted", "Deleted", ValuesOf(*file));
}

HttpResponse PostUndo(ConsoleContext& console, const ConsoleVisit& visit) {
  const auto file = console.shelf.Find(visit.words[0]);
  if (!file) return NotFound();
  const auto name = console.shelf.Restore(file->id);
  if (!name)
    return ConsolePage(console, visit, "not_restored", "Not put back", ValuesOf(*file), 409);
  return Redirect(InstancePath(*name) + "?restored=1");
}

HttpResponse PostForget(ConsoleContext& console, const ConsoleVisit& visit) {
  console.shelf.Forget(visit.words[0]);
  return Redirect("/instances");
}

void EndUndo(ConsoleContext& console, const ConsoleVisit& visit, HttpResponse& response) {
  const std::string_view id = CookieOf(visit.request, kDeletedCookie);
  if (id.empty() || visit.request.target == "/deleted/" + std::string(id)) return;
  console.shelf.Forget(id);
  const bool has_next = std::ranges::any_of(response.fields, [](const HttpField& field) {
    return field.name == "Set-Cookie" && field.value.starts_with(kDeletedCookie);
  });
  if (!has_next) response.fields.push_back(EndCookie(kDeletedCookie));
}

}  // namespace brantel::host
