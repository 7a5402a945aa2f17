#include "host/console/module_form.h"

#include <algorithm>
#include <vector>

#include "web/form_fields.h"

namespace brantel::host {
namespace {

struct PostedField {
  std::string_view name;
  ValueEnd end;
};

// In the order in which the pages have them: the module takes the first place that looks like a
// field.
std::vector<PostedField> FieldsOf(const ClassDescription& notifier_class) {
  std::vector<PostedField> fields;
  for (const std::string_view name :
       {std::string_view("page"), kOriginalNameField, std::string_view("action"),
        std::string_view("type"), kInstanceNameField})
    fields.push_back({name, ValueEnd::kLineBreak});
  for (const auto i : notifier_class.instances.fields.form_order()) {
    const FormRow& row = notifier_class.instances.fields[i].form;
    if (row.input == FormInput::kNone) continue;
    const bool has_lines = row.input == FormInput::kMultiLine;
    fields.push_back({row.name, has_lines ? ValueEnd::kNothing : ValueEnd::kLineBreak});
  }
  fields.push_back({"end", ValueEnd::kLineBreak});
  return fields;
}

}  // namespace

std::optional<std::string> FormForModule(const ClassDescription& notifier_class,
                                         const FormValues& posted) {
  const auto fields = FieldsOf(notifier_class);
  std::string form;
  for (const PostedField& field : fields) {
    std::string value(posted.Get(field.name));
    if (value.find('+') != std::string::npos) return std::nullopt;
    std::ranges::replace(value, ' ', '+');
    form.append(form.empty() ? "" : "&").append(field.name).append("=").append(value);
  }
  for (const PostedField& field : fields) {
    if (FormField(form, field.name, field.end) != posted.Get(field.name)) return std::nullopt;
  }
  return form;
}

}  // namespace brantel::host
