#pragma once

#include <windows.h>

#include "dialog/dialog.h"
#include "dialog/dialog_tasks_win32.h"
#include "dialog/dialog_view.h"
#include "system/result.h"

namespace brantel {

// A dialog on the screen.
class DialogWindow final : public DialogView {
 public:
  // Shows the dialog over its owner, which may be null, and returns when it has been closed. E_FAIL
  // when it cannot be shown or breaks off.
  Result Run(Dialog& dialog, HWND owner);

  void SetTitle(const std::string& title) override;
  std::string Text(int control, std::size_t limit) override;
  void SetText(int control, const std::string& text) override;
  void LimitTyping(int control, std::size_t limit) override;
  bool IsChecked(int control) override;
  void SetChecked(int control, bool checked) override;
  void FillList(int control, const std::vector<std::string>& items) override;
  std::optional<std::size_t> SelectedItem(int control) override;
  void SelectItem(int control, std::size_t position) override;
  void AppendItem(int control, const std::string& item) override;
  bool HasItem(int control, const std::string& item) override;
  void MoveFocus(int control) override;
  void ShowMessage(const std::string& text, const std::string& caption, MessageIcon icon) override;
  void ShowHelp(std::optional<unsigned> context) override;
  std::optional<std::string> ChooseFile(const FileKind& kind, const std::string& current) override;
  std::optional<std::string> ChooseDirectory(const std::string& title) override;
  void ShowDialog(const DialogMaker& make) override;
  std::shared_ptr<DialogTasks> Tasks() override;
  void Close() override;

 private:
  static INT_PTR CALLBACK DialogProcedure(HWND window, UINT message, WPARAM wparam,
                                          LPARAM lparam) noexcept;
  // True when the dialog has dealt with the message.
  bool Handle(UINT message, WPARAM wparam, LPARAM lparam);
  void HandleCommand(int control, int notification);
  bool Draw(const DRAWITEMSTRUCT& item);

  HWND window_ = nullptr;
  Dialog* dialog_ = nullptr;            // the one that is shown
  std::shared_ptr<WindowTasks> tasks_;  // null as long as nobody wants to leave any
};

}  // namespace brantel
