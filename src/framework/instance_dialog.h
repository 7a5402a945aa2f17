#pragma once

#include <optional>
#include <span>
#include <string>

#include "framework/dialog.h"
#include "framework/dialog_view.h"
#include "framework/instance_codec.h"
#include "framework/instance_directory.h"
#include "framework/instance_files.h"
#include "framework/instance_layout.h"
#include "framework/notifier.h"
#include "framework/notifier_host.h"
#include "framework/string_table.h"

namespace brantel {

// When OK asks whether the name is already used.
enum class NameTakenCheck { kBeforeFields, kAfterFields };

// What the dialog of a class is, beside the fields of its layout.
struct InstanceDialogSpec {
  const InstanceLayout& layout;
  int template_id = 0;
  unsigned add_title_id = 0;
  unsigned edit_title_id = 0;
  int name_control = 0;
  // Where the focus goes when the name will not do.
  int name_error_focus = 0;
  unsigned name_missing_text_id = text_id::kNameMissing;
  NameTakenCheck name_taken_check = NameTakenCheck::kBeforeFields;
  // Whether the dialog has its title when the instance to edit cannot be loaded.
  bool titled_after_failed_load = true;
  // Whether a new instance begins as the one that is named "Default".
  bool prefilled = true;
  int help_button = kHelpButton;
  // None: the help file opens at its contents.
  std::optional<unsigned> help_context{};
  std::span<const BitmapButton> bitmap_buttons{};
};

// What a host wants of a dialog.
struct InstanceDialogCall {
  std::string directory;
  std::optional<InstanceArgument> edited{};  // the name of the instance to edit; none to add one
  NotifierHost* host = nullptr;              // is told what cannot be loaded; may be null
};

// The dialog in which an operator adds or edits an instance. Classes derive from it what their own
// buttons and lists do.
class InstanceDialog : public Dialog {
 public:
  // All but the call must outlive the object.
  InstanceDialog(const InstanceDialogSpec& spec, DialogView& view, InstanceFiles& files,
                 InstanceDialogCall call);

  [[nodiscard]] int template_id() const override { return spec_.template_id; }
  [[nodiscard]] std::span<const BitmapButton> bitmap_buttons() const override {
    return spec_.bitmap_buttons;
  }

  // Fills the dialog with the instance to edit or with the one that prefills new ones.
  void Open() override;

  // OK checks what was entered, saves it and closes the dialog; whatever stands against that is
  // told in a message box, and the dialog stays.
  void Press(int control) override;

  void Change(int control) override;
  void Select(int control) override;
  void Help() override;

  // Whether something was changed since the dialog opened.
  [[nodiscard]] bool modified() const { return modified_; }

  // The name under which the instance was saved; none as long as it was not.
  [[nodiscard]] const std::optional<std::string>& saved_name() const { return saved_name_; }

 protected:
  [[nodiscard]] DialogView& view() { return view_; }

  // What was loaded.
  [[nodiscard]] const Instance& instance() const { return instance_; }

  // Gives the dialog's lists their items, before anything is selected in them.
  virtual void FillLists() {}

  // Another item is selected in a list. Called once for each list when the dialog opens, too.
  virtual void SelectionChanged(int /*list*/) {}

  // What the class requires of its fields beyond that they are there. Tells the operator when that
  // is not so.
  virtual bool RequireValidFields() { return true; }

  // What was entered in a field's edit.
  std::string FieldText(std::size_t field);

  // Tells why OK cannot be followed, and puts the focus where that can be mended.
  void Refuse(unsigned text_id, const std::string& caption, int focus);

  // One of the class's own buttons was pressed.
  virtual void PressOwnButton(int /*control*/) {}

  // Lets the operator choose the file that an edit names.
  void BrowseForFile(int edit, const FileKind& kind);

 private:
  void OpenNew();
  void Prefill();
  void OpenEdited(const InstanceArgument& edited);
  void SetTitle(unsigned id);
  void LimitTyping();
  void Show();
  void CheckChoices();
  void SelectInLists();

  void Accept();
  // Each tells the operator when what it requires is not so.
  bool RequireName(const std::string& name);
  bool RequireFreeName(const std::string& name);
  bool RequireFields();
  [[nodiscard]] bool IsTaken(const std::string& name) const;
  [[nodiscard]] bool IsEditedName(const std::string& name) const;
  [[nodiscard]] std::size_t LongestEntry(const DialogControl& control) const;
  void Collect();
  void CollectField(std::size_t index);
  void CollectChoice(std::size_t index);
  bool Save(const std::string& name);

  const InstanceDialogSpec& spec_;
  DialogView& view_;
  InstanceFiles& files_;
  const InstanceDialogCall call_;
  InstanceDirectory directory_;
  // What was loaded, and then what is to be saved. What the dialog does not show stays in it.
  Instance instance_;
  bool edits_loaded_instance_ = false;
  bool modified_ = false;
  std::optional<std::string> saved_name_;
};

}  // namespace brantel
