#pragma once

#include <cstddef>
#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace brantel {

enum class MessageIcon { kNone, kError };

// The kind of file that an operator looks for, beside which all files can be shown.
struct FileKind {
  unsigned label_id = 0;       // its text in the string table
  std::string_view pattern{};  // such as "*.wav"
};

class Dialog;
class DialogTasks;
class DialogView;

// Makes a dialog that answers through the view, which outlives it.
using DialogMaker = std::function<std::unique_ptr<Dialog>(DialogView&)>;

// A dialog on the screen, as those see it who decide what happens in it. Texts are in the system's
// ANSI code page. What asks the operator something returns when that is answered.
class DialogView {
 public:
  virtual ~DialogView() = default;

  virtual void SetTitle(const std::string& title) = 0;

  // A control's text, as many whole characters of it as `limit` bytes hold.
  virtual std::string Text(int control, std::size_t limit) = 0;
  virtual void SetText(int control, const std::string& text) = 0;

  // From now on an operator cannot type more bytes than these into an edit.
  virtual void LimitTyping(int control, std::size_t limit) = 0;

  virtual bool IsChecked(int control) = 0;
  virtual void SetChecked(int control, bool checked) = 0;

  // The items of a list, of which none is selected then.
  virtual void FillList(int control, const std::vector<std::string>& items) = 0;
  // The position of the list's selected item, from 0; nothing when none is selected.
  virtual std::optional<std::size_t> SelectedItem(int control) = 0;
  // Selects none when the list has no such position. Is no selection of the operator's.
  virtual void SelectItem(int control, std::size_t position) = 0;

  // Adds to the items of a list, leaving the selection and what was typed beside the list alone.
  virtual void AppendItem(int control, const std::string& item) = 0;
  // Whether the list has the item, as the system compares them: letter case does not matter.
  virtual bool HasItem(int control, const std::string& item) = 0;

  // Does nothing when the dialog has no such control.
  virtual void MoveFocus(int control) = 0;

  // A message box with an OK button.
  virtual void ShowMessage(const std::string& text, const std::string& caption,
                           MessageIcon icon) = 0;

  // The help file at this context number, or at its contents.
  virtual void ShowHelp(std::optional<unsigned> context) = 0;

  // Lets the operator choose an existing file, beginning with `current`. Nothing when the operator
  // gives up or `current` can be no file name.
  virtual std::optional<std::string> ChooseFile(const FileKind& kind,
                                                const std::string& current) = 0;

  // Lets the operator choose a folder. Nothing when the operator gives up; empty when the choice is
  // no folder of the file system.
  virtual std::optional<std::string> ChooseDirectory(const std::string& title) = 0;

  // Shows another dialog over this one until the operator closes it.
  virtual void ShowDialog(const DialogMaker& make) = 0;

  // Where other threads leave what is to be done in the dialog, once that is being opened.
  virtual std::shared_ptr<DialogTasks> Tasks() = 0;

  // Closes the dialog after the event that is being handled.
  virtual void Close() = 0;
};

}  // namespace brantel
