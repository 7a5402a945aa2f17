#include "framework/instance_dialog.h"

#include <algorithm>
#include <charconv>

#include "framework/text_choice.h"

namespace brantel {
namespace {

// As long as the web forms let a name be. Files cannot have names of that length anyway.
constexpr std::size_t kLongestName = 512;

// The open-file dialog's buffer holds this much beside its NUL.
constexpr std::size_t kLongestChosenFile = 511;

// What is no number counts as 0.
std::int32_t ToNumber(std::string_view text) {
  const std::size_t first = text.find_first_not_of(' ');
  if (first == std::string_view::npos) return 0;
  text = text.substr(first, text.find_last_not_of(' ') + 1 - first);

  std::int32_t number = 0;
  const char* const end = text.data() + text.size();
  const auto [stop, error] = std::from_chars(text.data(), end, number);
  return error == std::errc() && stop == end ? number : 0;
}

}  // namespace

InstanceDialog::InstanceDialog(const InstanceDialogSpec& spec, DialogView& view,
                               InstanceFiles& files, InstanceDialogCall call)
    : spec_(spec),
      view_(view),
      files_(files),
      call_(std::move(call)),
      directory_(files, spec.layout, call_.directory),
      instance_(spec.layout.fields.size()) {}

void InstanceDialog::Open() {
  LimitTyping();
  FillLists();
  if (call_.edited) {
    OpenEdited(*call_.edited);
  } else {
    OpenNew();
  }
  CheckChoices();
  SelectInLists();
  modified_ = false;  // what was filled in is no change of the operator's
}

void InstanceDialog::OpenNew() {
  SetTitle(spec_.add_title_id);
  if (spec_.prefilled) Prefill();
}

void InstanceDialog::Prefill() {
  if (const auto loaded = directory_.Load(kDefaultInstanceName)) {
    instance_ = *loaded;
    Show();
  } else {
    LogFailedDefaultLoad(AlertLog(call_.host), spec_.layout);
  }
}

void InstanceDialog::OpenEdited(const InstanceArgument& edited) {
  const auto loaded = directory_.Load(edited.path);
  if (loaded || spec_.titled_after_failed_load) SetTitle(spec_.edit_title_id);
  if (!loaded) {
    LogFailedLoad(AlertLog(call_.host), spec_.layout, edited.text);
    view_.ShowMessage(LoadText(text_id::kErrorLoading), "", MessageIcon::kNone);
    return;
  }
  edits_loaded_instance_ = true;
  instance_ = *loaded;
  view_.SetText(spec_.name_control, edited.path);
  Show();
}

void InstanceDialog::SetTitle(unsigned id) {
  view_.SetTitle(LoadText(id));
}

void InstanceDialog::LimitTyping() {
  view_.LimitTyping(spec_.name_control, kLongestName);
  for (const InstanceField& field : spec_.layout.fields) {
    if (field.control.kind == ControlKind::kEdit) {
      view_.LimitTyping(field.control.id, LongestEntry(field.control));
    }
  }
}

void InstanceDialog::Show() {
  for (std::size_t i = 0; i < spec_.layout.fields.size(); ++i) {
    const InstanceField& field = spec_.layout.fields[i];
    if (field.control.kind == ControlKind::kCheckBox) {
      view_.SetChecked(field.control.id, instance_.integer(i) != 0);
    } else if (field.control.kind == ControlKind::kEdit) {
      view_.SetText(field.control.id, field.kind == FieldKind::kInteger
                                          ? std::to_string(instance_.integer(i))
                                          : instance_.text(i));
    }
  }
}

// Also when nothing was loaded: something is always chosen.
void InstanceDialog::CheckChoices() {
  for (std::size_t i = 0; i < spec_.layout.fields.size(); ++i) {
    const InstanceField& field = spec_.layout.fields[i];
    const auto& buttons = field.control.choice_buttons;
    const std::size_t chosen =
        call_.edited ? ChosenPosition(field.form.choices, instance_.text(i)) : 0;
    for (std::size_t position = 0; position < buttons.size(); ++position) {
      view_.SetChecked(buttons[position], position == chosen);
    }
  }
}

// Also when nothing was loaded: a list always shows what a new instance would have.
void InstanceDialog::SelectInLists() {
  for (std::size_t i = 0; i < spec_.layout.fields.size(); ++i) {
    const DialogControl& control = spec_.layout.fields[i].control;
    if (control.kind != ControlKind::kList) continue;
    view_.SelectItem(control.id, static_cast<std::size_t>(instance_.integer(i)));
    SelectionChanged(control.id);
  }
}

void InstanceDialog::Press(int control) {
  if (control == kOkButton) {
    Accept();
  } else if (control == kCancelButton) {
    view_.Close();
  } else if (control == spec_.help_button) {
    Help();
  } else {
    Change(control);
    PressOwnButton(control);
  }
}

void InstanceDialog::Change(int control) {
  const auto shows = [&](const InstanceField& field) {
    return (field.control.kind != ControlKind::kNone && field.control.id == control) ||
           std::ranges::count(field.control.choice_buttons, control) != 0;
  };
  modified_ =
      modified_ || control == spec_.name_control || std::ranges::any_of(spec_.layout.fields, shows);
}

void InstanceDialog::Select(int control) {
  Change(control);
  SelectionChanged(control);
}

void InstanceDialog::Help() {
  view_.ShowHelp(spec_.help_context);
}

void InstanceDialog::BrowseForFile(int edit, const FileKind& kind) {
  const auto chosen = view_.ChooseFile(kind, view_.Text(edit, kLongestChosenFile));
  if (chosen) view_.SetText(edit, *chosen);
}

void InstanceDialog::Accept() {
  const std::string name = view_.Text(spec_.name_control, kLongestName);
  const bool taken_after_fields = spec_.name_taken_check == NameTakenCheck::kAfterFields;
  if (!RequireName(name)) return;
  if (!taken_after_fields && !RequireFreeName(name)) return;
  if (!RequireFields() || !RequireValidFields()) return;
  if (taken_after_fields && !RequireFreeName(name)) return;

  Collect();
  if (!Save(name)) {
    view_.ShowMessage(LoadText(text_id::kErrorSaving), "", MessageIcon::kNone);
    return;
  }
  saved_name_ = name;
  view_.Close();
}

bool InstanceDialog::RequireName(const std::string& name) {
  if (!name.empty()) return true;
  Refuse(spec_.name_missing_text_id, "", spec_.name_error_focus);
  return false;
}

bool InstanceDialog::RequireFreeName(const std::string& name) {
  if (!IsTaken(name)) return true;
  Refuse(text_id::kNameTaken, LoadText(text_id::kNameTakenCaption), spec_.name_error_focus);
  return false;
}

bool InstanceDialog::RequireFields() {
  for (std::size_t i = 0; i < spec_.layout.fields.size(); ++i) {
    const DialogControl& control = spec_.layout.fields[i].control;
    if (control.missing_text_id == 0 || !FieldText(i).empty()) continue;
    Refuse(control.missing_text_id, "", control.id);
    return false;
  }
  return true;
}

// A name that leads out of the directory is nobody's in it; such a name fails when saving.
bool InstanceDialog::IsTaken(const std::string& name) const {
  return !IsEditedName(name) && files_.IsValidName(name) && directory_.Holds(name);
}

bool InstanceDialog::IsEditedName(const std::string& name) const {
  return call_.edited && files_.SameName(name, call_.edited->path);
}

void InstanceDialog::Refuse(unsigned text_id, const std::string& caption, int focus) {
  view_.ShowMessage(LoadText(text_id), caption, MessageIcon::kNone);
  view_.MoveFocus(focus);
}

std::string InstanceDialog::FieldText(std::size_t field) {
  const DialogControl& control = spec_.layout.fields[field].control;
  return view_.Text(control.id, LongestEntry(control));
}

std::size_t InstanceDialog::LongestEntry(const DialogControl& control) const {
  return std::min(control.longest, LongestText(spec_.layout));
}

void InstanceDialog::Collect() {
  for (std::size_t i = 0; i < spec_.layout.fields.size(); ++i) {
    CollectField(i);
  }
}

void InstanceDialog::CollectField(std::size_t index) {
  const InstanceField& field = spec_.layout.fields[index];
  const int control = field.control.id;
  if (field.control.kind == ControlKind::kCheckBox) {
    instance_.set_integer(index, view_.IsChecked(control) ? 1 : 0);
  } else if (field.control.kind == ControlKind::kList) {
    const auto position = view_.SelectedItem(control);
    if (position) instance_.set_integer(index, static_cast<std::int32_t>(*position));
  } else if (field.control.kind == ControlKind::kChoice) {
    CollectChoice(index);
  } else if (field.control.kind == ControlKind::kEdit) {
    if (field.kind == FieldKind::kInteger) {
      instance_.set_integer(index, ToNumber(FieldText(index)));
    } else {
      instance_.set_text(index, FieldText(index));
    }
  }
}

void InstanceDialog::CollectChoice(std::size_t index) {
  const InstanceField& field = spec_.layout.fields[index];
  unsigned id = field.form.choices.first_id;
  for (const int button : field.control.choice_buttons) {
    if (view_.IsChecked(button)) return instance_.set_text(index, LoadText(id));
    ++id;
  }
}

bool InstanceDialog::Save(const std::string& name) {
  if (!files_.IsValidName(name) || !directory_.Save(name, instance_)) return false;
  // A rename. The old file goes last, so that there is always one that holds the instance; a file
  // that could not be loaded is left alone, since nobody knows what it holds.
  if (edits_loaded_instance_ && !IsEditedName(name)) directory_.Delete(call_.edited->path);
  return true;
}

}  // namespace brantel
