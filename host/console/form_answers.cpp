#include "host/console/form_answers.h"

#include <optional>
#include <string>
#include <utility>

#include "host/console/console_pages.h"
#include "host/console/console_responses.h"
#include "host/console/form_dialog.h"
#include "host/console/instance_directory.h"
#include "host/instances/journal_name.h"
#include "module/class_descriptions.h"

namespace brantel::host {
namespace {

HttpResponse ShowFramed(ConsoleContext& console, const ConsoleVisit& visit,
                        const ClassDescription& notifier_class,
                        const std::optional<std::string>& edited) {
  const std::string class_name(notifier_class.instances.class_name);
  const std::string frame = "/frame/" + visit.session->frame_token + "/" + class_name;
  PageValues values;
  values
      .Set("frame_path", edited ? frame + "/edit?name=" + EncodePercents(*edited) : frame + "/add")
      .Set("form_path", (edited ? InstancePath(*edited) : "/add/" + class_name) + "/form")
      .Set("class", class_name);
  const std::string title = edited ? "Edit " + *edited : "Add an instance of " + class_name;
  return ConsolePage(console, visit, "framed", title, std::move(values));
}

HttpResponse ShowFormPage(ConsoleContext& console, const ConsoleVisit& visit,
                          const ClassDescription& notifier_class,
                          const std::optional<std::string>& edited, const FormValues* posted,
                          const std::string& complaint) {
  ConsoleForm form = ShowForm(notifier_class, console.backend, edited);
  const std::string title = form.title;
  if (posted != nullptr) form = RefilledForm(std::move(form), *posted);
  const std::string class_name(notifier_class.instances.class_name);
  const std::string path = edited ? InstancePath(*edited) : "/add/" + class_name;
  PageValues values;
  FillForm(values, form);
  values.Set("form_path", path + "/form")
      .Set("page_path", edited ? path + "/edit" : path)
      .Set("class", class_name)
      .Set("help_path", "/help/" + class_name)
      .Set("complaint", complaint)
      .SetFlag("has_complaint", !complaint.empty())
      .SetFlag("has_pages", notifier_class.web_form.has_value());
  return ConsolePage(console, visit, "form", title, std::move(values),
                     complaint.empty() ? 200 : 409);
}

HttpResponse SubmitFormPage(ConsoleContext& console, const ConsoleVisit& visit,
                            const ClassDescription& notifier_class,
                            const std::optional<std::string>& edited) {
  FormOutcome outcome;
  if (IsJournalName(visit.form.Get(kFormNameField))) {
    outcome.complaint = "The journal has a name like this.";
  } else {
    outcome = SubmitForm(notifier_class, console.backend, edited, visit.form);
  }
  if (outcome.saved_name) return Redirect(InstancePath(*outcome.saved_name) + "?saved=1");
  return ShowFormPage(console, visit, notifier_class, edited, &visit.form, outcome.complaint);
}

}  // namespace

HttpResponse GetAdd(ConsoleContext& console, const ConsoleVisit& visit) {
  const ClassDescription* const notifier_class = FindClassDescription(visit.words[0]);
  if (notifier_class == nullptr) return NotFound();
  if (!notifier_class->web_form) return Redirect("/add/" + visit.words[0] + "/form");
  return ShowFramed(console, visit, *notifier_class, std::nullopt);
}

HttpResponse GetEdit(ConsoleContext& console, const ConsoleVisit& visit) {
  const auto file = FindInstance(console, visit.words[0]);
  if (!file || ClassOf(*file) == nullptr) return NotFound();
  const ClassDescription& notifier_class = *ClassOf(*file);
  if (!notifier_class.web_form ||
      (!console.options.shows_secrets && HoldsSecret(console, notifier_class, file->name)))
    return Redirect(InstancePath(file->name) + "/form");
  return ShowFramed(console, visit, notifier_class, file->name);
}

HttpResponse GetAddForm(ConsoleContext& console, const ConsoleVisit& visit) {
  const ClassDescription* const notifier_class = FindClassDescription(visit.words[0]);
  if (notifier_class == nullptr) return NotFound();
  return ShowFormPage(console, visit, *notifier_class, std::nullopt, nullptr, "");
}

HttpResponse PostAddForm(ConsoleContext& console, const ConsoleVisit& visit) {
  const ClassDescription* const notifier_class = FindClassDescription(visit.words[0]);
  if (notifier_class == nullptr) return NotFound();
  return SubmitFormPage(console, visit, *notifier_class, std::nullopt);
}

HttpResponse GetEditForm(ConsoleContext& console, const ConsoleVisit& visit) {
  const auto file = FindInstance(console, visit.words[0]);
  if (!file || ClassOf(*file) == nullptr) return NotFound();
  return ShowFormPage(console, visit, *ClassOf(*file), file->name, nullptr, "");
}

HttpResponse PostEditForm(ConsoleContext& console, const ConsoleVisit& visit) {
  const auto file = FindInstance(console, visit.words[0]);
  if (!file || ClassOf(*file) == nullptr) return NotFound();
  return SubmitFormPage(console, visit, *ClassOf(*file), file->name);
}

}  // namespace brantel::host
