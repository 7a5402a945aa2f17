#include "framework/web_forms.h"

#include "framework/double_byte_text.h"
#include "framework/form_fields.h"
#include "framework/instance_directory.h"
#include "framework/web_page.h"

namespace brantel {
namespace {

// The instances that a posted form is about.
struct FormTarget {
  std::string name;         // to save under
  std::string old_name;     // whose file a rename leaves behind; empty: there is none
  std::string values_from;  // where the values stand that the form has no field for
};

// Splits "new/old". What follows a second "/" means nothing.
FormTarget EditTarget(std::string_view original_name) {
  const std::size_t end = original_name.find('/');
  const std::string name(original_name.substr(0, end));
  if (end == std::string_view::npos) return {name, {}, name};
  const std::string_view rest = original_name.substr(end + 1);
  const std::string old_name(rest.substr(0, rest.find('/')));
  return {name, old_name, old_name.empty() ? name : old_name};
}

FormTarget TargetOf(std::string_view form) {
  const std::string original_name = FormField(form, "origname", ValueEnd::kLineBreak);
  const std::string instance_name = FormField(form, "instancename", ValueEnd::kLineBreak);
  if (original_name.empty()) return {instance_name, {}, kDefaultInstanceName};
  return EditTarget(original_name);
}

bool CanBeFiles(const InstanceFiles& files, const FormTarget& target) {
  return files.IsValidName(target.name) &&
         (target.old_name.empty() || files.IsValidName(target.old_name));
}

void TakePostedValues(const InstanceLayout& layout, std::string_view form, Instance& values) {
  for (std::size_t i = 0; i < layout.fields.size(); ++i) {
    const FormRow& row = layout.fields[i].form;
    if (row.input == FormInput::kNone) continue;
    const ValueEnd end =
        row.input == FormInput::kMultiLine ? ValueEnd::kNothing : ValueEnd::kLineBreak;
    values.set_text(i, FormField(form, row.name, end));
  }
}

void DropTornCharacters(Instance& values, std::size_t field_count, bool (*is_lead_byte)(char)) {
  for (std::size_t i = 0; i < field_count; ++i) {
    const std::string_view whole = WithoutTornCharacter(values.text(i), is_lead_byte);
    if (whole.size() != values.text(i).size()) values.set_text(i, std::string(whole));
  }
}

// What the class's own reader would refuse must not take the place of what it can read.
bool CanBeLoadedAgain(const InstanceLayout& layout, const Instance& values) {
  for (std::size_t i = 0; i < layout.fields.size(); ++i) {
    if (values.text(i).size() > LongestText(layout)) return false;
  }
  return true;
}

}  // namespace

HtmlText WebForms::AddPage(const std::string& directory, NotifierHost* host) {
  auto values = InstanceDirectory(files_, spec_.layout, directory).Load(kDefaultInstanceName);
  if (!values) {
    LogFailedDefaultLoad(AlertLog(host), spec_.layout);
    values.emplace(spec_.layout.fields.size());
  }
  RememberProfile(*values);
  return BuildAddPage(spec_, *values);
}

std::optional<HtmlText> WebForms::EditPage(const InstanceArgument& argument, std::string_view name,
                                           NotifierHost* host) {
  auto values = LoadInstanceForAlert(files_, spec_.layout, argument, host);
  if (!values) return std::nullopt;
  RememberProfile(*values);
  DropTornCharacters(*values, spec_.layout.fields.size(), is_lead_byte_);
  return BuildEditPage(spec_, name, *values);
}

Result WebForms::SubmitForm(const std::string& directory, std::string_view form) {
  const FormTarget target = TargetOf(form);
  if (!CanBeFiles(files_, target)) return kFail;

  InstanceDirectory instances(files_, spec_.layout, directory);
  Instance values =
      instances.Load(target.values_from).value_or(Instance(spec_.layout.fields.size()));
  TakePostedValues(spec_.layout, form, values);
  if (spec_.profile_field) values.set_integer(*spec_.profile_field, profile_);
  if (!CanBeLoadedAgain(spec_.layout, values)) return kFail;

  // Whether the old file could be deleted makes no difference. Where both names mean one file, the
  // new content replaces the old, and a failing save leaves it whole.
  const bool leaves_old_file =
      !target.old_name.empty() && !files_.SameName(target.name, target.old_name);
  if (leaves_old_file) instances.Delete(target.old_name);
  // A form creates the file also where SMTPMail could insist on an existing one: an edit form saves
  // under its name for all classes alike, whether that is new or its file has vanished meanwhile.
  return instances.Save(target.name, values) ? kOk : kFail;
}

void WebForms::RememberProfile(const Instance& shown) {
  if (spec_.profile_field) profile_ = shown.integer(*spec_.profile_field);
}

}  // namespace brantel
