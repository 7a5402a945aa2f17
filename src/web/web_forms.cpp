#include "web/web_forms.h"

#include "instance/instance_directory.h"
#include "notifier/instance_loading.h"
#include "text/double_byte_text.h"
#include "web/form_fields.h"
#include "web/web_page.h"

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

void DropTornCharacters(Instance& values, std::size_t field_count, const CodePage& code_page) {
  for (std::size_t i = 0; i < field_count; ++i) {
    const std::string_view whole = WithoutTornCharacter(values.text(i), code_page);
    if (whole.size() != values.text(i).size()) values.set_text(i, std::string(whole));
  }
}

// Saves the content under the target's name. A file of an old name is deleted first, whether that
// can be done or not; where both names mean one file, the new content replaces the old, and a
// failing save leaves it whole. From the first change on nothing takes memory that may be wanting.
bool SaveTarget(InstanceFiles& files, const InstanceDirectory& instances, const FormTarget& target,
                std::string_view content) {
  const std::string path = instances.PathOf(target.name);
  if (target.old_name.empty()) return files.Write(path, content);

  const std::string old_path = instances.PathOf(target.old_name);
  const bool is_one_file = instances.AreOne(target.name, target.old_name);
  if (!is_one_file) files.Delete(old_path);
  if (!files.Write(path, content)) return false;
  if (is_one_file && target.name != target.old_name) files.Rename(old_path, path);
  return true;
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
  auto values =
      InstanceDirectory(files_, description_.instances, directory).TryLoad(kDefaultInstanceName);
  if (!values) {
    LogFailedDefaultLoad(AlertLog(host), description_.instances);
    values.emplace(description_.instances.fields.size());
  }
  RememberProfile(*values);
  return BuildAddPage(description_, *values);
}

std::optional<HtmlText> WebForms::EditPage(const InstanceArgument& argument, std::string_view name,
                                           NotifierHost* host) {
  auto values = LoadInstanceForAlert(files_, description_.instances, argument, host);
  if (!values) return std::nullopt;
  RememberProfile(*values);
  DropTornCharacters(*values, description_.instances.fields.size(), code_page_);
  return BuildEditPage(description_, name, *values);
}

Result WebForms::SubmitForm(const std::string& directory, std::string_view form) {
  const FormTarget target = TargetOf(form);
  if (!CanBeFiles(files_, target)) return kFail;

  const InstanceDirectory instances(files_, description_.instances, directory);
  Instance values =
      LoadInstance(files_, description_.instances, instances.PathOf(target.values_from))
          .value_or(Instance(description_.instances.fields.size()));
  TakePostedValues(description_.instances, form, values);
  if (description_.profile_field) values.set_integer(*description_.profile_field, profile_);
  if (!CanBeLoadedAgain(description_.instances, values)) return kFail;

  // A form creates the file also where SMTPMail could insist on an existing one: an edit form saves
  // under its name for all classes alike, whether that is new or its file has vanished meanwhile.
  const std::string content = EncodeInstance(description_.instances, values);
  return SaveTarget(files_, instances, target, content) ? kOk : kFail;
}

void WebForms::RememberProfile(const Instance& shown) {
  if (description_.profile_field) profile_ = shown.integer(*description_.profile_field);
}

}  // namespace brantel
