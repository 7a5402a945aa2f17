#include "host/console/form_dialog.h"

#include <algorithm>
#include <cstddef>
#include <map>
#include <memory>

#include "dialog/dialog_tasks.h"
#include "dialog/instance_dialog.h"
#include "host/instances/field_guide.h"
#include "host/text/utf8_characters.h"

namespace brantel::host {
namespace {

std::string Capitalised(std::string_view words) {
  std::string text(words);
  if (!text.empty() && text[0] >= 'a' && text[0] <= 'z')
    text[0] = static_cast<char>(text[0] - 'a' + 'A');
  return text;
}

// A dialog that is nowhere on a screen: it keeps what the dialog shows, and what was entered.
class UnseenDialogView final : public DialogView {
 public:
  [[nodiscard]] const std::string& title() const { return title_; }
  // What stands against OK; empty when nothing does.
  [[nodiscard]] const std::string& complaint() const { return complaint_; }
  [[nodiscard]] std::size_t LimitOf(int control) const {
    const auto limit = limits_.find(control);
    return limit == limits_.end() ? 0 : limit->second;
  }
  [[nodiscard]] const std::string& TextOf(int control) { return texts_[control]; }

  void SetTitle(const std::string& title) override { title_ = title; }
  std::string Text(int control, std::size_t limit) override {
    return texts_[control].substr(0, limit);
  }
  void SetText(int control, const std::string& text) override { texts_[control] = text; }
  void LimitTyping(int control, std::size_t limit) override { limits_[control] = limit; }
  bool IsChecked(int control) override { return checks_[control]; }
  void SetChecked(int control, bool checked) override { checks_[control] = checked; }
  void FillList(int /*control*/, const std::vector<std::string>& /*items*/) override {}
  std::optional<std::size_t> SelectedItem(int control) override {
    const auto selected = selections_.find(control);
    if (selected == selections_.end()) return std::nullopt;
    return selected->second;
  }
  void SelectItem(int control, std::size_t position) override { selections_[control] = position; }
  void AppendItem(int /*control*/, const std::string& /*item*/) override {}
  bool HasItem(int /*control*/, const std::string& /*item*/) override { return false; }
  void MoveFocus(int /*control*/) override {}
  void ShowMessage(const std::string& text, const std::string& /*caption*/,
                   MessageIcon /*icon*/) override {
    complaint_ = text;
  }
  void ShowHelp(std::optional<unsigned> /*context*/) override {}
  std::optional<std::string> ChooseFile(const FileKind& /*kind*/,
                                        const std::string& /*current*/) override {
    return std::nullopt;
  }
  std::optional<std::string> ChooseDirectory(const std::string& /*title*/) override {
    return std::nullopt;
  }
  void ShowDialog(const DialogMaker& /*make*/) override {}
  std::shared_ptr<DialogTasks> Tasks() override { return nullptr; }
  void Close() override {}

 private:
  std::string title_;
  std::string complaint_;
  std::map<int, std::string> texts_;
  std::map<int, std::size_t> limits_;
  std::map<int, bool> checks_;
  std::map<int, std::size_t> selections_;
};

// The dialog of one form, opened.
class OpenForm {
 public:
  // Throws nothing; what cannot be loaded is the complaint of the view.
  OpenForm(const ClassDescription& notifier_class, ConsoleBackend& backend,
           const std::optional<std::string>& edited)
      : description_(notifier_class),
        backend_(backend),
        edited_(edited),
        dialog_(notifier_class, view_, backend.files(), CallOf(backend, edited)) {
    dialog_.Open();
  }

  ConsoleForm Shown() {
    ConsoleForm form{view_.title(), edited_.value_or(""), {}};
    for (const InstanceField& field : description_.instances.fields) {
      if (field.control.kind != ControlKind::kNone) form.controls.push_back(ControlOf(field));
    }
    return form;
  }

  FormOutcome Submit(const FormValues& posted) {
    // Of an instance that cannot be loaded the form has shown nothing that could be saved.
    if (!view_.complaint().empty()) return {.complaint = view_.complaint()};
    if (auto complaint = Enter(posted)) return {.complaint = *complaint};
    dialog_.Press(STANDARD_OK);
    if (!dialog_.saved_name()) return {.complaint = view_.complaint()};
    return {.saved_name = backend_.system().FromCodePage(*dialog_.saved_name())};
  }

 private:
  static InstanceDialogCall CallOf(ConsoleBackend& backend,
                                   const std::optional<std::string>& edited) {
    InstanceDialogCall call{.directory = backend.directory()};
    if (edited)
      call.edited = InstanceArgument{{}, backend.system().ToCodePage(*edited).value_or("")};
    return call;
  }

  // By the fields' names, with "-" between the words, as the command line has them.
  static std::string PostedName(const InstanceField& field) {
    std::string name(field.name);
    std::ranges::replace(name, ' ', '-');
    return name;
  }

  [[nodiscard]] bool IsSecret(const InstanceField& field) const {
    return GuideOf(description_, field.index).secrecy == Secrecy::kSecret;
  }

  FormControl ControlOf(const InstanceField& field) {
    const FieldGuide& guide = GuideOf(description_, field.index);
    FormControl control{.name = PostedName(field),
                        .label = Capitalised(field.name),
                        .value = {},
                        .is_needed = field.control.missing_text_id != 0,
                        .hint = Capitalised(guide.meaning) + ": " + std::string(guide.values)};
    switch (field.control.kind) {
      case ControlKind::kEdit:
        FillEdit(control, field);
        break;
      case ControlKind::kCheckBox:
        control.kind = FormControlKind::kCheckBox;
        control.value = view_.IsChecked(field.control.id) ? "1" : "0";
        break;
      case ControlKind::kList:
        control.kind = FormControlKind::kSelection;
        control.choices = NumbersOf(field);
        control.value = std::to_string(view_.SelectedItem(field.control.id).value_or(0));
        break;
      case ControlKind::kChoice:
        control.kind = FormControlKind::kSelection;
        FillChoices(control, field);
        break;
      case ControlKind::kNone:
        break;
    }
    return control;
  }

  void FillEdit(FormControl& control, const InstanceField& field) {
    const std::string& stored = view_.TextOf(field.control.id);
    if (IsSecret(field)) {
      control.kind = FormControlKind::kPassword;
      control.is_kept = !stored.empty();
      return;
    }
    const bool has_lines = field.form.input == FormInput::kMultiLine;
    control.kind = has_lines ? FormControlKind::kLines : FormControlKind::kLine;
    control.value = backend_.system().FromCodePage(stored);
  }

  static std::vector<std::string> NumbersOf(const InstanceField& field) {
    std::vector<std::string> numbers;
    for (std::int32_t number = field.minimum; number <= field.maximum; ++number)
      numbers.push_back(std::to_string(number));
    return numbers;
  }

  void FillChoices(FormControl& control, const InstanceField& field) {
    unsigned id = field.form.choices.first_id;
    for (const int button : field.control.choice_buttons) {
      control.choices.push_back(LoadText(id++));
      if (view_.IsChecked(button)) control.value = control.choices.back();
    }
  }

  // Enters what was posted. Why not, when it cannot be entered.
  std::optional<std::string> Enter(const FormValues& posted) {
    const auto name = posted.Get(kFormNameField);
    if (auto complaint = EnterText(description_.dialog.name_control, "Name", name))
      return complaint;
    for (const InstanceField& field : description_.instances.fields) {
      if (auto complaint = EnterField(field, posted.Get(PostedName(field)))) return complaint;
    }
    return std::nullopt;
  }

  std::optional<std::string> EnterField(const InstanceField& field, std::string_view value) {
    const int control = field.control.id;
    switch (field.control.kind) {
      case ControlKind::kNone:
        break;
      case ControlKind::kCheckBox:
        view_.SetChecked(control, value == "1");
        break;
      case ControlKind::kList:
        return Select(field, value);
      case ControlKind::kChoice:
        return Choose(field, value);
      case ControlKind::kEdit:
        if (IsSecret(field) && value.empty()) break;  // what is stored stays
        return EnterText(control, Capitalised(field.name), value,
                         field.form.input == FormInput::kMultiLine);
    }
    return std::nullopt;
  }

  std::optional<std::string> EnterText(int control, const std::string& label,
                                       std::string_view value, bool may_have_lines = false) {
    if (!may_have_lines && value.find_first_of("\r\n") != std::string_view::npos)
      return label + " has to be one line.";
    const auto stored = backend_.system().ToCodePage(value);
    if (!stored) return label + " has characters that the system's code page lacks.";
    if (stored->size() > view_.LimitOf(control)) {
      return label + " is longer than " + std::to_string(view_.LimitOf(control)) + " bytes.";
    }
    view_.SetText(control, *stored);
    return std::nullopt;
  }

  std::optional<std::string> Select(const InstanceField& field, std::string_view value) {
    const auto numbers = NumbersOf(field);
    const auto chosen = std::ranges::find(numbers, value);
    if (chosen == numbers.end()) return Capitalised(field.name) + " is none of those offered.";
    view_.SelectItem(field.control.id, static_cast<std::size_t>(chosen - numbers.begin()));
    return std::nullopt;
  }

  std::optional<std::string> Choose(const InstanceField& field, std::string_view value) {
    bool is_known = false;
    unsigned id = field.form.choices.first_id;
    for (const int button : field.control.choice_buttons) {
      const bool is_chosen = LoadText(id++) == value;
      view_.SetChecked(button, is_chosen);
      is_known = is_known || is_chosen;
    }
    if (!is_known) return Capitalised(field.name) + " is none of those offered.";
    return std::nullopt;
  }

  const ClassDescription& description_;
  ConsoleBackend& backend_;
  const std::optional<std::string>& edited_;
  UnseenDialogView view_;
  InstanceDialog dialog_;
};

}  // namespace

ConsoleForm ShowForm(const ClassDescription& notifier_class, ConsoleBackend& backend,
                     const std::optional<std::string>& edited) {
  return OpenForm(notifier_class, backend, edited).Shown();
}

FormOutcome SubmitForm(const ClassDescription& notifier_class, ConsoleBackend& backend,
                       const std::optional<std::string>& edited, const FormValues& posted) {
  return OpenForm(notifier_class, backend, edited).Submit(posted);
}

ConsoleForm RefilledForm(ConsoleForm form, const FormValues& posted) {
  form.name = posted.Get(kFormNameField);
  for (FormControl& control : form.controls) {
    if (control.kind == FormControlKind::kPassword) continue;
    const bool is_check_box = control.kind == FormControlKind::kCheckBox;
    control.value = is_check_box && !posted.Has(control.name) ? "0" : posted.Get(control.name);
  }
  return form;
}

}  // namespace brantel::host
