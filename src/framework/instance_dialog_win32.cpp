#include "framework/instance_dialog_win32.h"

#include <algorithm>

#include "framework/bitmap_button_win32.h"
#include "framework/exception_guard.h"
#include "framework/file_chooser_win32.h"
#include "framework/module_instance_win32.h"

namespace brantel {
namespace {

constexpr const char* kHelpFile = "vantrel.hlp";

// How the dialog ended, as the system hands it on; 0 and -1 are its own failures.
constexpr INT_PTR kClosed = 1;
constexpr INT_PTR kBrokenOff = 2;

// An edit takes this for "as much as there can be".
constexpr std::size_t kNoLimit = 0;
constexpr std::size_t kHighestLimit = 0x7FFFFFFE;

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

Result InstanceDialogWindow::Run(InstanceDialog& dialog) {
  dialog_ = &dialog;
  const INT_PTR ending =
      DialogBoxParamA(ModuleInstance(), MAKEINTRESOURCEA(dialog.spec().template_id),
                      GetActiveWindow(), DialogProcedure, reinterpret_cast<LPARAM>(this));
  dialog_ = nullptr;
  window_ = nullptr;
  return ending == kClosed ? kOk : kFail;
}

INT_PTR InstanceDialogWindow::DialogProcedure(HWND window, UINT message, WPARAM wparam,
                                              LPARAM lparam) noexcept {
  if (message == WM_INITDIALOG) {
    SetWindowLongPtrA(window, DWLP_USER, lparam);
    reinterpret_cast<InstanceDialogWindow*>(lparam)->window_ = window;
  }
  auto* const self = reinterpret_cast<InstanceDialogWindow*>(GetWindowLongPtrA(window, DWLP_USER));
  if (self == nullptr) return FALSE;  // what comes before WM_INITDIALOG

  bool handled = false;
  const Result result = GuardExceptions([&] {
    handled = self->Handle(message, wparam, lparam);
    return kOk;
  });
  if (Failed(result)) EndDialog(window, kBrokenOff);
  return handled ? TRUE : FALSE;
}

bool InstanceDialogWindow::Handle(UINT message, WPARAM wparam, LPARAM lparam) {
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
    case WM_DRAWITEM:
      return Draw(*reinterpret_cast<const DRAWITEMSTRUCT*>(lparam));
    default:
      return false;
  }
}

void InstanceDialogWindow::HandleCommand(int control, int notification) {
  if (notification == BN_CLICKED) dialog_->Press(control);
  if (notification == EN_CHANGE) dialog_->Change(control);
}

bool InstanceDialogWindow::Draw(const DRAWITEMSTRUCT& item) {
  const auto buttons = dialog_->spec().bitmap_buttons;
  const auto button =
      std::ranges::find(buttons, static_cast<int>(item.CtlID), &BitmapButton::control);
  if (button == buttons.end()) return false;
  DrawBitmapButton(item, button->bitmap_id);
  return true;
}

void InstanceDialogWindow::SetTitle(const std::string& title) {
  SetWindowTextA(window_, title.c_str());
}

std::string InstanceDialogWindow::Text(int control, std::size_t limit) {
  HWND window = GetDlgItem(window_, control);
  std::string text(static_cast<std::size_t>(GetWindowTextLengthA(window)) + 1, '\0');
  const int length = GetWindowTextA(window, text.data(), static_cast<int>(text.size()));
  text.resize(static_cast<std::size_t>(length));
  return Shortened(text, limit);
}

void InstanceDialogWindow::SetText(int control, const std::string& text) {
  SetDlgItemTextA(window_, control, text.c_str());
}

void InstanceDialogWindow::LimitTyping(int control, std::size_t limit) {
  SendDlgItemMessageA(window_, control, EM_LIMITTEXT, limit <= kHighestLimit ? limit : kNoLimit, 0);
}

bool InstanceDialogWindow::IsChecked(int control) {
  return IsDlgButtonChecked(window_, control) == BST_CHECKED;
}

void InstanceDialogWindow::SetChecked(int control, bool checked) {
  CheckDlgButton(window_, control, checked ? BST_CHECKED : BST_UNCHECKED);
}

void InstanceDialogWindow::MoveFocus(int control) {
  HWND window = GetDlgItem(window_, control);
  if (window == nullptr) return;
  SendMessageA(window_, WM_NEXTDLGCTL, reinterpret_cast<WPARAM>(window), TRUE);
}

void InstanceDialogWindow::ShowMessage(const std::string& text, const std::string& caption,
                                       MessageIcon icon) {
  const UINT icon_flag = icon == MessageIcon::kError ? MB_ICONERROR : 0;
  MessageBoxA(window_, text.c_str(), caption.c_str(), MB_OK | icon_flag);
}

void InstanceDialogWindow::ShowHelp(unsigned context) {
  WinHelpA(window_, kHelpFile, HELP_CONTEXT, context);
}

std::optional<std::string> InstanceDialogWindow::ChooseFile(const FileKind& kind,
                                                            const std::string& current) {
  return brantel::ChooseFile(window_, kind, current);
}

std::optional<std::string> InstanceDialogWindow::ChooseDirectory(const std::string& title) {
  return brantel::ChooseDirectory(window_, title);
}

void InstanceDialogWindow::Close() {
  EndDialog(window_, kClosed);
}

}  // namespace brantel
