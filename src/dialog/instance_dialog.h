#pragma once

#include <optional>
#include <span>
#include <string>

#include "description/class_description.h"
#include "dialog/dialog.h"
#include "dialog/dialog_view.h"
#include "instance/instance_argument.h"
#include "instance/instance_codec.h"
#include "instance/instance_directory.h"
#include "instance/instance_files.h"
#include "notifier/notifier_host.h"
#include "text/string_table.h"

namespace brantel {

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
  InstanceDialog(const ClassDescription& description, DialogView& view, InstanceFiles& files,
                 InstanceDialogCall call);

  [[nodiscard]] int template_id() const override { return description_.dialog.template_id; }
  [[nodiscard]] std::span<const BitmapButton> bitmap_buttons() const override {
    return description_.dialog.bitmap_buttons;
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

  // The name that the file of the saved instance has; none as long as it was not saved.
  [[nodiscard]] const std::optional<std::string>& saved_name() const { return saved_name_; }

 protected:
  [[nodiscard]] DialogView& view() { return view_; }

  // What was loaded.
  [[nodiscard]] const Instance& instance() const { return instance_; }

  // Gives the dialog's lists their items, before anything is selected in them.
  virtual void FillLists() {}

  // Another item is selected in a list. Called once for each list when the dialog opens, too.
  virtual void SelectionChanged(int /*list*/) {}

  // Whether a field may be saved with what was entered, beyond what its row requires.
  virtual bool Accepts(std::size_t /*field*/, const std::string& /*text*/) { return true; }

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
  bool RequireField(std::size_t index);
  // Tells why OK cannot be followed, and puts the focus where that can be mended.
  void Refuse(unsigned text_id, const std::string& caption, int focus);
  // What was entered in a field's edit.
  std::string FieldText(std::size_t field);
  [[nodiscard]] bool IsTaken(const std::string& name) const;
  [[nodiscard]] bool MayReplaceFile(const std::string& name) const;
  [[nodiscard]] bool IsEditedFile(const std::string& name) const;
  [[nodiscard]] std::size_t LongestEntry(const DialogControl& control) const;
  void Collect();
  void CollectField(std::size_t index);
  void CollectChoice(std::size_t index);
  bool Save(const std::string& name);
  void LeaveOldName(const std::string& old_name, const std::string& name);

  const ClassDescription& description_;
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
