#pragma once

#include <windows.h>

#include <functional>
#include <optional>
#include <ostream>
#include <string>
#include <thread>
#include <vector>

#include "system/windows/handle_win32.h"
#include "tests/module/expected_classes.h"
#include "tests/module/loaded_module.h"
#include "tests/module/recording_host.h"

namespace brantel {

// The buttons that all dialogs have.
inline constexpr int kOk = 1;
inline constexpr int kCancel = 2;
inline constexpr int kHelp = 9;

// What the system makes of the key F1.
inline constexpr UINT kContextHelpKey = 0x4D;

// What is asked of the module: AddInstance, or EditInstance of the named instance.
struct DialogRequest {
  // Shows a dialog for the directory, and says what instance it has left.
  using Method = HRESULT (*)(INotifierConfig& config, BSTR directory, BSTR* name);

  const ExpectedClass& notifier_class;
  std::wstring directory;
  std::optional<std::wstring> edited = {};
  RecordingHost* host = nullptr;  // is bound when there is one
  // Whether the dialog's thread has an active window before.
  bool has_owner = false;
  // Is called instead, when there is one.
  Method method = nullptr;
};

struct DialogOutcome {
  HRESULT result = E_UNEXPECTED;
  // What *name holds after the call; nothing when it is the very pointer that it was before.
  std::optional<std::wstring> new_name = {};
};

// A message box as an operator reads it.
struct MessageBoxContent {
  std::string text;
  std::string caption = {};
  std::vector<std::string> buttons = {"OK"};
  bool has_error_icon = false;

  friend bool operator==(const MessageBoxContent&, const MessageBoxContent&) = default;
};

std::ostream& operator<<(std::ostream& out, const MessageBoxContent& content);

// An operator before a dialog of the module. The dialog runs on a thread of its own, on which its
// object is created, used and released; the methods act on what that thread shows, and return when
// it has done what follows from that and waits for the operator again. Texts are in the ANSI code
// page. What does not come about in time throws std::runtime_error.
class DialogSession {
 public:
  // Opens the dialog, unless the call ends without one.
  DialogSession(const LoadedModule& module, const DialogRequest& request);
  DialogSession(const DialogSession&) = delete;
  DialogSession& operator=(const DialogSession&) = delete;
  // Cancels whatever is still open.
  ~DialogSession();

  // The dialog; null when it is closed.
  [[nodiscard]] HWND dialog() const;
  // What is open over the dialog, such as a message box; null when there is nothing.
  [[nodiscard]] HWND popup() const;
  // The window that was active before the dialog.
  [[nodiscard]] HWND owner() const { return owner_; }

  [[nodiscard]] HWND Control(int id) const;
  [[nodiscard]] std::string Text(int id) const;
  [[nodiscard]] bool IsChecked(int id) const;
  // The number of the control that has the focus; 0 when none has.
  [[nodiscard]] int Focus() const;

  void SetText(int id, const std::string& text) const;
  void Click(int id);
  // Does not wait for what follows.
  void StartClick(int id) const;
  // These go to the control that has the focus.
  void PressKey(WORD key);
  void PressAltAnd(char letter);
  void Type(const std::string& text);

  // Waits until the dialog can be seen, wholly painted.
  void AwaitSight();
  // Waits until something is open over the dialog.
  HWND AwaitPopup();
  // Clicks a button of it.
  void ClickInPopup(int id);

  // The message box that has to be there.
  [[nodiscard]] MessageBoxContent ReadMessageBox() const;
  void CloseMessageBox();

  // Whether the dialog answers nothing for a while that is long for a dialog.
  [[nodiscard]] bool StandsStill() const;
  // Waits until the dialog's thread waits for the operator.
  void Settle();

  // Waits for the end of the call.
  const DialogOutcome& Await();

 private:
  [[nodiscard]] HWND FocusedWindow() const;

  void Run(const LoadedModule& module, const DialogRequest& request);
  void CreateThreadsWindows(bool with_owner);
  void Call(INotifierConfig& config, const DialogRequest& request);
  void AwaitThat(const std::function<bool()>& condition, const char* otherwise);

  HWND owner_ = nullptr;
  HWND marker_ = nullptr;  // tells when the thread's queue has been read up to a message for it
  DWORD thread_id_ = 0;
  DialogOutcome outcome_;
  Handle ready_;
  Handle settled_;
  Handle ended_;
  std::jthread thread_;
};

// What a window says of itself.
std::string WindowText(HWND window);
std::string WindowClass(HWND window);
// The windows directly in another, in the order in which the Tab key visits them.
std::vector<HWND> Children(HWND parent);

}  // namespace brantel
