#include "host/console/frame_answers.h"

#include <algorithm>
#include <optional>
#include <string>

#include "host/console/console_responses.h"
#include "host/console/instance_directory.h"
#include "host/console/module_form.h"
#include "host/console/overview_answers.h"
#include "module/class_descriptions.h"

namespace brantel::host {
namespace {

// What keeps the form from being that of an instance that is there, whose name it gives, or of a
// new one; empty where nothing does.
std::string FaultOfNames(ConsoleContext& console, const ClassDescription& notifier_class,
                         const FormValues& form, std::optional<std::string>& edited) {
  const std::string original(form.Get(kOriginalNameField));
  if (original.empty())
    return FaultOfName(console, form.Get(kInstanceNameField), nullptr).value_or("");
  const auto file = FindInstance(console, original);
  if (!file || ClassOf(*file) != &notifier_class) return "There is no such instance any more.";
  edited = original;
  return "";
}

// What keeps the values from being given to the module.
std::string FaultOfValues(ConsoleContext& console, const FormValues& values, bool can_be_told) {
  if (!can_be_told) {
    return "This form cannot tell the module of the signs & and +, of line ends in a line, and of "
           "a value in which another field seems to begin. The console's form can.";
  }
  const bool is_stored = std::ranges::all_of(values.pairs(), [&](const FormValues::Pair& pair) {
    return console.backend.system().ToCodePage(pair.value).has_value();
  });
  return is_stored ? "" : "A value has characters that the system's code page lacks.";
}

}  // namespace

HttpResponse GetFrameAdd(ConsoleContext& console, const ConsoleVisit& visit) {
  const ClassDescription* const notifier_class = FindClassDescription(visit.words[1]);
  if (notifier_class == nullptr || !notifier_class->web_form) return NotFound();
  if (!console.options.shows_secrets && HoldsSecret(console, *notifier_class, "Default")) {
    return StepPage(403, "This page would show the password of the instance Default.",
                    "/add/" + visit.words[1] + "/form", "Use the console's form");
  }
  return ModulePage(console.backend.AddPage(*notifier_class));
}

HttpResponse GetFrameEdit(ConsoleContext& console, const ConsoleVisit& visit) {
  const auto file = FindInstance(console, visit.query.Get("name"));
  if (!file || ClassOf(*file) == nullptr || visit.words[1] != file->layout->class_name ||
      !ClassOf(*file)->web_form)
    return NotFound();
  if (!console.options.shows_secrets && HoldsSecret(console, *ClassOf(*file), file->name)) {
    return StepPage(403, "This page would show the password of the instance.",
                    InstancePath(file->name) + "/form", "Use the console's form");
  }
  return ModulePage(console.backend.EditPage(*ClassOf(*file), file->name));
}

HttpResponse PostFrame(ConsoleContext& console, const ConsoleVisit& visit) {
  const ClassDescription* const notifier_class = FindClassDescription(visit.words[1]);
  if (notifier_class == nullptr || !notifier_class->web_form) return NotFound();
  std::optional<std::string> edited;
  std::string fault = FaultOfNames(console, *notifier_class, visit.form, edited);
  const std::string name = edited.value_or(std::string(visit.form.Get(kInstanceNameField)));
  const std::string form_path = (edited ? InstancePath(name) : "/add/" + visit.words[1]) + "/form";
  const auto form = FormForModule(*notifier_class, visit.form);
  if (fault.empty()) fault = FaultOfValues(console, visit.form, form.has_value());
  if (!fault.empty())
    return StepPage(409, "Not saved. " + fault, form_path, "Use the console's form");
  if (!console.backend.SubmitForm(*notifier_class, edited, *form)) {
    return StepPage(409, "The module did not save it; a value may be too long, or the file in use.",
                    form_path, "Use the console's form");
  }
  return StepPage(200, "The instance is saved.", InstancePath(name), "Show the instance");
}

HttpResponse GetFrameHelp(ConsoleContext& console, const ConsoleVisit& visit) {
  // Without the session: a page to which the module's page leads has no forms of the console's.
  return GetHelp(console, {.request = visit.request, .words = {visit.words[1]}});
}

bool IsWithinFrame(const HttpRequest& request) {
  const auto destination = request.Field("Sec-Fetch-Dest").value_or("");
  return destination == "iframe" || destination == "frame";
}

HttpResponse GetStepToInstances(ConsoleContext& /*console*/, const ConsoleVisit& visit) {
  if (!IsWithinFrame(visit.request)) return Redirect("/instances");
  return StepPage(200, "Notifications", "/instances", "Show the instances");
}

HttpResponse GetStepToOverview(ConsoleContext& /*console*/, const ConsoleVisit& visit) {
  if (!IsWithinFrame(visit.request)) return Redirect("/");
  return StepPage(200, "Top view", "/", "Show the overview");
}

}  // namespace brantel::host
