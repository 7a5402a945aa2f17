#include "dialog/dialog_window_win32.h"

#include <algorithm>
#include <array>
#include <string_view>

#include "dialog/bitmap_button_win32.h"
#include "dialog/file_chooser_win32.h"
#include "system/exception_guard.h"
#include "system/windows/module_instance_win32.h"

namespace brantel {
namespace {

constexpr const char* kHelpFile = "vantrel.hlp";

// How the dialog ended, as the system hands it on; 0 and -1 are its own failures.
constexpr INT_PTR kClosed = 1;
constexpr INT_PTR kBrokenOff = 2;

// An edit takes this for "as much as there can be".
constexpr std::size_t kNoLimit = 0;
constexpr std::size_t kHighestLimit = 0x7FFFFFFE;

bool IsComboBox(HWND window) {
  std::array<char, 16> name{};
  GetClassNameA(window, name.data(), static_cast<int>(name.size()));
  return std::string_view(name.data()) == "ComboBox";
}

// As many whole characters as `limit` bytes hold.
std::string Shortened(const std::string& text, std::size_t limit) {
  const char* const begin = text.c_str();
  const char* end = begin;
  while (*end != '\0') {
    const char* const next = CharNextExA(CP_ACP, end, 0);
    if (static_cast<std::size_t>(next - begin) > limit) break;
    end = next;
  }
  return {begin, end};
}

}  // namespace

Result DialogWindow::Run(Dialog& dialog, HWND owner) {
  dialog_ = &dialog;
  const INT_PTR ending = DialogBoxParamA(ModuleInstance(), MAKEINTRESOURCEA(dialog.template_id()),
                                         owner, DialogProcedure, reinterpret_cast<LPARAM>(this));
  dialog_ = nullptr;
  window_ = nullptr;
  return ending == kClosed ? kOk : kFail;
}

INT_PTR DialogWindow::DialogProcedure(HWND window, UINT message, WPARAM wparam,
                                      LPARAM lparam) noexcept {
  if (message == WM_INITDIALOG) {
    SetWindowLongPtrA(window, DWLP_USER, lparam);
    reinterpret_cast<DialogWindow*>(lparam)->window_ = window;
  }
  auto* const self = reinterpret_cast<DialogWindow*>(GetWindowLongPtrA(window, DWLP_USER));
  if (self == nullptr) return FALSE;  // what comes before WM_INITDIALOG

  bool handled = false;
  const Result result = GuardExceptions([&] {
    handled = self->Handle(message, wparam, lparam);
    return kOk;
  });
  if (Failed(result)) EndDialog(window, kBrokenOff);
  return handled ? TRUE : FALSE;
}

bool DialogWindow::Handle(UINT message, WPARAM wparam, LPARAM lparam) {
  switch (message) {
    case WM_INITDIALOG:
      dialog_->Open();
      return true;  // the focus goes to the first control
    case WM_COMMAND:
      HandleCommand(LOWORD(wparam), HIWORD(wparam));
      return true;
    case WM_HELP:
      dialog_->Help();
      return true;
    case WindowTasks::kMessage:
      if (tasks_) tasks_->Do();
      return true;
    case WM_DESTROY:
      if (tasks_) tasks_->Close();
      return false;
    case WM_DRAWITEM:
      return Draw(*reinterpret_cast<const DRAWITEMSTRUCT*>(lparam));
    default:
      return false;
  }
}

void DialogWindow::HandleCommand(int control, int notification) {
  if (notification == BN_CLICKED) dialog_->Press(control);
  if (notification == EN_CHANGE || notification == CBN_EDITCHANGE) dialog_->Change(control);
  if (notification == CBN_SELCHANGE) dialog_->Select(control);
}

bool DialogWindow::Draw(const DRAWITEMSTRUCT& item) {
  const auto buttons = dialog_->bitmap_buttons();
  const auto button =
      std::ranges::find(buttons, static_cast<int>(item.CtlID), &BitmapButton::control);
  if (button == buttons.end()) return false;
  DrawBitmapButton(item, button->bitmap_id);
  return true;
}

void DialogWindow::SetTitle(const std::string& title) {
  SetWindowTextA(window_, title.c_str());
}

std::string DialogWindow::Text(int control, std::size_t limit) {
  HWND window = GetDlgItem(window_, control);
  std::string text(static_cast<std::size_t>(GetWindowTextLengthA(window)) + 1, '\0');
  const int length = GetWindowTextA(window, text.data(), static_cast<int>(text.size()));
  text.resize(static_cast<std::size_t>(length));
  return Shortened(text, limit);
}

void DialogWindow::SetText(int control, const std::string& text) {
  SetDlgItemTextA(window_, control, text.c_str());
}

void DialogWindow::LimitTyping(int control, std::size_t limit) {
  const UINT message = IsComboBox(GetDlgItem(window_, control)) ? CB_LIMITTEXT : EM_LIMITTEXT;
  SendDlgItemMessageA(window_, control, message, limit <= kHighestLimit ? limit : kNoLimit, 0);
}

bool DialogWindow::IsChecked(int control) {
  return IsDlgButtonChecked(window_, control) == BST_CHECKED;
}

void DialogWindow::SetChecked(int control, bool checked) {
  CheckDlgButton(window_, control, checked ? BST_CHECKED : BST_UNCHECKED);
}

void DialogWindow::FillList(int control, const std::vector<std::string>& items) {
  SendDlgItemMessageA(window_, control, CB_RESETCONTENT, 0, 0);
  for (const std::string& item : items) {
    AppendItem(control, item);
  }
}

std::optional<std::size_t> DialogWindow::SelectedItem(int control) {
  const LRESULT position = SendDlgItemMessageA(window_, control, CB_GETCURSEL, 0, 0);
  if (position < 0) return std::nullopt;
  return static_cast<std::size_t>(position);
}

void DialogWindow::SelectItem(int control, std::size_t position) {
  SendDlgItemMessageA(window_, control, CB_SETCURSEL, position, 0);
}

void DialogWindow::AppendItem(int control, const std::string& item) {
  SendDlgItemMessageA(window_, control, CB_ADDSTRING, 0, reinterpret_cast<LPARAM>(item.c_str()));
}

bool DialogWindow::HasItem(int control, const std::string& item) {
  constexpr auto kFromTheStart = static_cast<WPARAM>(-1);
  return SendDlgItemMessageA(window_, control, CB_FINDSTRINGEXACT, kFromTheStart,
                             reinterpret_cast<LPARAM>(item.c_str())) != CB_ERR;
}

void DialogWindow::MoveFocus(int control) {
  HWND window = GetDlgItem(window_, control);
  if (window == nullptr) return;
  SendMessageA(window_, WM_NEXTDLGCTL, reinterpret_cast<WPARAM>(window), TRUE);
}

void DialogWindow::ShowMessage(const std::string& text, const std::string& caption,
                               MessageIcon icon) {
  const UINT icon_flag = icon == MessageIcon::kError ? MB_ICONERROR : 0;
  MessageBoxA(window_, text.c_str(), caption.c_str(), MB_OK | icon_flag);
}

void DialogWindow::ShowHelp(std::optional<unsigned> context) {
  WinHelpA(window_, kHelpFile, context ? HELP_CONTEXT : HELP_CONTENTS, context.value_or(0));
}

std::optional<std::string> DialogWindow::ChooseFile(const FileKind& kind,
                                                    const std::string& current) {
  return brantel::ChooseFile(window_, kind, current);
}

std::optional<std::string> DialogWindow::ChooseDirectory(const std::string& title) {
  return brantel::ChooseDirectory(window_, title);
}

void DialogWindow::ShowDialog(const DialogMaker& make) {
  DialogWindow window;
  const auto dialog = make(window);
  window.Run(*dialog, window_);
}

std::shared_ptr<DialogTasks> DialogWindow::Tasks() {
  if (!tasks_) tasks_ = std::make_shared<WindowTasks>(window_);
  return tasks_;
}

void DialogWindow::Close() {
  EndDialog(window_, kClosed);
}

}  // namespace brantel
