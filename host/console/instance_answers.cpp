#include "host/console/instance_answers.h"

#include <utility>

#include "host/checks/diagnosis.h"
#include "host/console/console_cookies.h"
#include "host/console/console_pages.h"
#include "host/console/console_responses.h"
#include "host/console/instance_directory.h"
#include "instance/instance_codec.h"
#include "module/class_descriptions.h"

namespace brantel::host {

HttpResponse GetInstances(ConsoleContext& console, const ConsoleVisit& visit) {
  PageValues values;
  FillInstances(console, values);
  for (const ClassDescription* notifier_class : ClassDescriptions())
    FillClass(values.Add("classes"), *notifier_class);
  const std::string_view id = CookieOf(visit.request, kDeletedCookie);
  for (const FileAside& file : console.shelf.Files()) {
    // What this browser has deleted is gone when it has left the page about it for this one.
    if (file.id == id) continue;
    values.Add("aside").Set("name", file.name).Set("aside_path", "/deleted/" + file.id);
  }
  return ConsolePage(console, visit, "instances", "Instances", std::move(values));
}

HttpResponse GetInstance(ConsoleContext& console, const ConsoleVisit& visit) {
  const auto file = FindInstance(console, visit.words[0]);
  return file ? ShowInstance(console, visit, *file, "") : NotFound();
}

HttpResponse ShowInstance(ConsoleContext& console, const ConsoleVisit& visit,
                          const InstanceFile& file, const std::string& complaint) {
  PageValues values;
  FillListedInstance(values, file, LastAttemptOf(console.backend.Journal(), file.name),
                     console.backend);
  values.Set("complaint", complaint)
      .SetFlag("has_complaint", !complaint.empty())
      .SetFlag("is_saved", visit.query.Has("saved"))
      .SetFlag("is_restored", visit.query.Has("restored"))
      .SetFlag("is_readable", file.instance.has_value());
  FillDiagnosis(values, DiagnoseInstance(file, console.backend.system(), Reach::kOffline));
  if (file.instance) FillFields(values, file);
  FillEvents(values);
  return ConsolePage(console, visit, "instance", file.name, std::move(values),
                     complaint.empty() ? 200 : 409);
}

HttpResponse PostRename(ConsoleContext& console, const ConsoleVisit& visit) {
  const auto file = FindInstance(console, visit.words[0]);
  if (!file) return NotFound();
  const std::string new_name(visit.form.Get("name"));
  const auto old_stored = console.backend.system().ToCodePage(file->name);
  if (!old_stored) return ShowInstance(console, visit, *file, "It cannot be renamed here.");
  if (const auto fault = FaultOfName(console, new_name, &*old_stored))
    return ShowInstance(console, visit, *file, *fault);
  const std::string folder = console.backend.directory() + "\\";
  const std::string new_stored = console.backend.system().ToCodePage(new_name).value_or("");
  if (!console.backend.files().Rename(folder + *old_stored, folder + new_stored))
    return ShowInstance(console, visit, *file,
                        "It could not be renamed; somebody may be using it.");
  return Redirect(InstancePath(new_name) + "?saved=1");
}

HttpResponse PostCopy(ConsoleContext& console, const ConsoleVisit& visit) {
  const auto file = FindInstance(console, visit.words[0]);
  if (!file) return NotFound();
  const std::string new_name(visit.form.Get("name"));
  if (const auto fault = FaultOfName(console, new_name, nullptr))
    return ShowInstance(console, visit, *file, *fault);
  if (!file->stored || !file->fault.empty())
    return ShowInstance(console, visit, *file, "Only an instance that can be read can be copied.");
  const std::string path = console.backend.directory() + "\\" +
                           console.backend.system().ToCodePage(new_name).value_or("");
  if (!console.backend.files().Write(path, EncodeInstance(*file->layout, *file->stored)))
    return ShowInstance(console, visit, *file, "The copy could not be written.");
  return Redirect(InstancePath(new_name) + "?saved=1");
}

}  // namespace brantel::host
