#pragma once

#include <functional>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "description/class_description.h"
#include "host/console/console_backend.h"
#include "host/console/form_text.h"

namespace brantel::host {

enum class FormControlKind { kLine, kLines, kPassword, kCheckBox, kSelection };

// A field as a form shows it. Texts are UTF-8.
struct FormControl {
  FormControlKind kind = FormControlKind::kLine;
  std::string name;  // of the posted value
  std::string label;
  std::string value;                   // of a check box "1" or "0"; always empty for a password
  std::vector<std::string> choices{};  // of a selection, whose value is one of them
  bool is_needed = false;
  bool is_kept = false;  // a password that is stored, and stays when nothing is entered
  std::string hint{};
};

// A form for the instances of a class.
struct ConsoleForm {
  std::string title;
  std::string name;  // the instance's
  std::vector<FormControl> controls;
};

// What became of a posted form.
struct FormOutcome {
  std::optional<std::string> saved_name{};  // none: it was not saved
  std::string complaint{};                  // then why
};

// The class's own dialog, shown and operated as a web form: it fills itself in, checks and saves by
// its own rules. `edited` is the name of the instance, none for a new one.
ConsoleForm ShowForm(const ClassDescription& notifier_class, ConsoleBackend& backend,
                     const std::optional<std::string>& edited);
FormOutcome SubmitForm(const ClassDescription& notifier_class, ConsoleBackend& backend,
                       const std::optional<std::string>& edited, const FormValues& posted);

// The same form as it was posted, to be mended.
ConsoleForm RefilledForm(ConsoleForm form, const FormValues& posted);

// Name of the posted field that holds the instance's name.
inline constexpr std::string_view kFormNameField = "instance-name";

}  // namespace brantel::host
