#include "dialog/instance_dialog.h"

#include <algorithm>
#include <charconv>

#include "instance/text_choice.h"
#include "notifier/instance_loading.h"

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

InstanceDialog::InstanceDialog(const ClassDescription& description, DialogView& view,
                               InstanceFiles& files, InstanceDialogCall call)
    : description_(description),
      view_(view),
      files_(files),
      call_(std::move(call)),
      directory_(files, description.instances, call_.directory),
      instance_(description.instances.fields.size()) {}

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
  SetTitle(description_.dialog.add_title_id);
  if (description_.dialog.prefilled) Prefill();
}

// Shows also what begins empty: a number is then 0.
void InstanceDialog::Prefill() {
  if (const auto loaded = directory_.TryLoad(kDefaultInstanceName)) {
    instance_ = *loaded;
  } else {
    LogFailedDefaultLoad(AlertLog(call_.host), description_.instances);
  }
  Show();
}

void InstanceDialog::OpenEdited(const InstanceArgument& edited) {
  const auto loaded = directory_.TryLoad(edited.path);
  if (loaded || description_.dialog.titled_after_failed_load)
    SetTitle(description_.dialog.edit_title_id);
  if (!loaded) {
    LogFailedLoad(AlertLog(call_.host), description_.instances, edited.text);
    view_.ShowMessage(LoadText(text_id::kErrorLoading), "", MessageIcon::kNone);
    return;
  }
  edits_loaded_instance_ = true;
  instance_ = *loaded;
  view_.SetText(description_.dialog.name_control, edited.path);
  Show();
}

void InstanceDialog::SetTitle(unsigned id) {
  view_.SetTitle(LoadText(id));
}

void InstanceDialog::LimitTyping() {
  view_.LimitTyping(description_.dialog.name_control, kLongestName);
  for (const InstanceField& field : description_.instances.fields) {
    if (field.control.kind == ControlKind::kEdit) {
      view_.LimitTyping(field.control.id, LongestEntry(field.control));
    }
  }
}

void InstanceDialog::Show() {
  for (std::size_t i = 0; i < description_.instances.fields.size(); ++i) {
    const InstanceField& field = description_.instances.fields[i];
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
  for (std::size_t i = 0; i < description_.instances.fields.size(); ++i) {
    const InstanceField& field = description_.instances.fields[i];
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
  for (std::size_t i = 0; i < description_.instances.fields.size(); ++i) {
    const DialogControl& control = description_.instances.fields[i].control;
    if (control.kind != ControlKind::kList) continue;
    view_.SelectItem(control.id, static_cast<std::size_t>(instance_.integer(i)));
    SelectionChanged(control.id);
  }
}

void InstanceDialog::Press(int control) {
  if (control == STANDARD_OK) {
    Accept();
  } else if (control == STANDARD_CANCEL) {
    view_.Close();
  } else if (control == description_.dialog.help_button) {
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
  modified_ = modified_ || control == description_.dialog.name_control ||
              std::ranges::any_of(description_.instances.fields, shows);
}

void InstanceDialog::Select(int control) {
  Change(control);
  SelectionChanged(control);
}

void InstanceDialog::Help() {
  view_.ShowHelp(description_.dialog.help_context);
}

void InstanceDialog::BrowseForFile(int edit, const FileKind& kind) {
  const auto chosen = view_.ChooseFile(kind, view_.Text(edit, kLongestChosenFile));
  if (chosen) view_.SetText(edit, *chosen);
}

void InstanceDialog::Accept() {
  const std::string name = view_.Text(description_.dialog.name_control, kLongestName);
  const bool taken_after_fields =
      description_.dialog.name_taken_check == NameTakenCheck::kAfterFields;
  if (!RequireName(name)) return;
  if (!taken_after_fields && !RequireFreeName(name)) return;
  if (!RequireFields()) return;
  if (taken_after_fields && !RequireFreeName(name)) return;

  Collect();
  if (!Save(name)) {
    view_.ShowMessage(LoadText(text_id::kErrorSaving), "", MessageIcon::kNone);
    return;
  }
  view_.Close();
}

bool InstanceDialog::RequireName(const std::string& name) {
  if (!name.empty()) return true;
  Refuse(description_.dialog.name_missing_text_id, "", description_.dialog.name_error_focus);
  return false;
}

bool InstanceDialog::RequireFreeName(const std::string& name) {
  if (!IsTaken(name)) return true;
  Refuse(text_id::kNameTaken, LoadText(text_id::kNameTakenCaption),
         description_.dialog.name_error_focus);
  return false;
}

bool InstanceDialog::RequireFields() {
  return std::ranges::all_of(description_.instances.fields.check_order(),
                             [this](std::size_t index) { return RequireField(index); });
}

bool InstanceDialog::RequireField(std::size_t index) {
  const DialogControl& control = description_.instances.fields[index].control;
  if (control.missing_text_id == 0) return true;
  const std::string text = FieldText(index);
  const bool is_there = !text.empty() && text.find(control.required_text) != std::string::npos;
  if (is_there && Accepts(index, text)) return true;
  Refuse(control.missing_text_id, "", control.id);
  return false;
}

// A name that leads out of the directory is nobody's in it; such a name fails when saving.
bool InstanceDialog::IsTaken(const std::string& name) const {
  return files_.IsValidName(name) && directory_.Holds(name) && !MayReplaceFile(name);
}

// Whoever edits an instance that could not be loaded has not seen what its file holds. It may be
// mended as long as it is the class's own; any other file of its name is somebody else's.
bool InstanceDialog::MayReplaceFile(const std::string& name) const {
  return IsEditedFile(name) && (edits_loaded_instance_ || directory_.HoldsOwn(name));
}

// The name by which the host knows the edited instance may lead out of the directory, too.
bool InstanceDialog::IsEditedFile(const std::string& name) const {
  return call_.edited && files_.IsValidName(call_.edited->path) &&
         directory_.AreOne(name, call_.edited->path);
}

void InstanceDialog::Refuse(unsigned text_id, const std::string& caption, int focus) {
  view_.ShowMessage(LoadText(text_id), caption, MessageIcon::kNone);
  view_.MoveFocus(focus);
}

std::string InstanceDialog::FieldText(std::size_t field) {
  const DialogControl& control = description_.instances.fields[field].control;
  return view_.Text(control.id, LongestEntry(control));
}

std::size_t InstanceDialog::LongestEntry(const DialogControl& control) const {
  return std::min(control.longest, LongestText(description_.instances));
}

void InstanceDialog::Collect() {
  for (std::size_t i = 0; i < description_.instances.fields.size(); ++i) {
    CollectField(i);
  }
}

void InstanceDialog::CollectField(std::size_t index) {
  const InstanceField& field = description_.instances.fields[index];
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
  const InstanceField& field = description_.instances.fields[index];
  unsigned id = field.form.choices.first_id;
  for (const int button : field.control.choice_buttons) {
    if (view_.IsChecked(button)) return instance_.set_text(index, LoadText(id));
    ++id;
  }
}

bool InstanceDialog::Save(const std::string& name) {
  if (!files_.IsValidName(name) || !directory_.Save(name, instance_)) return false;
  if (call_.edited && name != call_.edited->path) LeaveOldName(call_.edited->path, name);
  saved_name_ = directory_.StoredName(name).value_or(name);
  return true;
}

// The old file goes last, so that there is always one that holds the instance. Left alone are a
// file that could not be loaded, since nobody knows what it holds, and one outside the directory.
void InstanceDialog::LeaveOldName(const std::string& old_name, const std::string& name) {
  if (IsEditedFile(name)) {
    directory_.Rename(old_name, name);
  } else if (edits_loaded_instance_ && files_.IsValidName(old_name)) {
    directory_.Delete(old_name);
  }
}

}  // namespace brantel
