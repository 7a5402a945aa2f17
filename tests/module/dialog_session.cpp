#include "tests/module/dialog_session.h"

#include <algorithm>
#include <array>
#include <stdexcept>

#include "system/windows/bstr_win32.h"
#include "tests/module/patience.h"

namespace brantel {
namespace {

constexpr DWORD kLookAgain = 10;       // ms between two looks at what another thread does
constexpr UINT kLongForADialog = 500;  // ms

constexpr const char* kDialogClass = "#32770";
constexpr int kMessageTextId = 0xFFFF;

// A BSTR that nobody may touch.
BSTR const kNotToTouch = static_cast<BSTR>(kLeftover);

Handle NewEvent() {
  return Handle(CreateEventW(nullptr, FALSE, FALSE, nullptr));
}

LRESULT CALLBACK SetEventOfMessage(HWND window, UINT message, WPARAM wparam, LPARAM lparam) {
  if (message != WM_APP) return DefWindowProcA(window, message, wparam, lparam);
  SetEvent(reinterpret_cast<HANDLE>(lparam));
  return 0;
}

struct DialogSearch {
  HWND owner = nullptr;  // of the dialog looked for; null for one that no dialog owns
  HWND found = nullptr;
};

BOOL CALLBACK KeepDialog(HWND window, LPARAM search_of) {
  auto& search = *reinterpret_cast<DialogSearch*>(search_of);
  if (WindowClass(window) != kDialogClass) return TRUE;
  HWND owner = GetWindow(window, GW_OWNER);
  const bool owned_by_dialog = owner != nullptr && WindowClass(owner) == kDialogClass;
  if (search.owner == nullptr ? owned_by_dialog : owner != search.owner) return TRUE;
  search.found = window;
  return FALSE;
}

HWND FindDialog(DWORD thread_id, HWND owner) {
  DialogSearch search{.owner = owner};
  EnumThreadWindows(thread_id, KeepDialog, reinterpret_cast<LPARAM>(&search));
  return search.found;
}

bool ShowsErrorIcon(HWND box) {
  return std::ranges::any_of(Children(box), [](HWND child) {
    if (WindowClass(child) != "Static") return false;
    const LRESULT icon = SendMessageA(child, STM_GETICON, 0, 0);
    return icon != 0 && icon == reinterpret_cast<LRESULT>(LoadIconA(nullptr, IDI_ERROR));
  });
}

std::vector<HWND> VisibleButtons(HWND box) {
  std::vector<HWND> buttons;
  for (HWND child : Children(box)) {
    if (WindowClass(child) == "Button" && IsWindowVisible(child) != FALSE) buttons.push_back(child);
  }
  return buttons;
}

HRESULT AddInstance(INotifierConfig& config, BSTR directory, BSTR* name) {
  return config.AddInstance(directory, name);
}

HRESULT EditInstance(INotifierConfig& config, BSTR directory, BSTR* name) {
  return config.EditInstance(directory, name);
}

DialogRequest::Method MethodOf(const DialogRequest& request) {
  if (request.method != nullptr) return request.method;
  return request.edited ? EditInstance : AddInstance;
}

}  // namespace

std::ostream& operator<<(std::ostream& out, const MessageBoxContent& content) {
  out << "\"" << content.text << "\" [" << content.caption << "]";
  for (const std::string& button : content.buttons) {
    out << " (" << button << ")";
  }
  return content.has_error_icon ? out << " error" : out;
}

std::string WindowText(HWND window) {
  std::string text(static_cast<std::size_t>(GetWindowTextLengthA(window)) + 1, '\0');
  text.resize(
      static_cast<std::size_t>(GetWindowTextA(window, text.data(), static_cast<int>(text.size()))));
  return text;
}

std::string WindowClass(HWND window) {
  std::array<char, 64> name{};
  GetClassNameA(window, name.data(), static_cast<int>(name.size()));
  return name.data();
}

std::vector<HWND> Children(HWND parent) {
  std::vector<HWND> children;
  for (HWND child = GetWindow(parent, GW_CHILD); child != nullptr;
       child = GetWindow(child, GW_HWNDNEXT)) {
    children.push_back(child);
  }
  return children;
}

DialogSession::DialogSession(const LoadedModule& module, const DialogRequest& request)
    : ready_(NewEvent()),
      settled_(NewEvent()),
      ended_(CreateEventW(nullptr, TRUE, FALSE, nullptr)) {
  thread_ = std::jthread([this, &module, request] { Run(module, request); });
  if (WaitForSingleObject(ready_.get(), kPatience) != WAIT_OBJECT_0) {
    throw std::runtime_error("the dialog's thread does not start");
  }
  Settle();
}

DialogSession::~DialogSession() {
  while (WaitForSingleObject(ended_.get(), kLookAgain) != WAIT_OBJECT_0) {
    HWND top = popup();
    if (top == nullptr) top = dialog();
    if (top != nullptr) PostMessageA(top, WM_COMMAND, IDCANCEL, 0);
  }
}

void DialogSession::Run(const LoadedModule& module, const DialogRequest& request) {
  thread_id_ = GetCurrentThreadId();
  CreateThreadsWindows(request.has_owner);
  SetEvent(ready_.get());
  try {
    const auto notifier = module.CreateNotifier(request.notifier_class);
    ComPointer<INotifierConfig> config;
    notifier->QueryInterface(ToGuid(kNotifierConfigIid), config.put_void());
    if (request.host != nullptr) notifier->Initialize(request.host);
    Call(*config.get(), request);
    notifier->Shutdown();
  } catch (const std::exception&) {
    outcome_.result = E_UNEXPECTED;
  }
  DestroyWindow(marker_);
  if (owner_ != nullptr) DestroyWindow(owner_);
  SetEvent(ended_.get());
}

void DialogSession::CreateThreadsWindows(bool with_owner) {
  marker_ =
      CreateWindowExA(0, "Static", "", 0, 0, 0, 0, 0, HWND_MESSAGE, nullptr, nullptr, nullptr);
  SetWindowLongPtrA(marker_, GWLP_WNDPROC, reinterpret_cast<LONG_PTR>(SetEventOfMessage));
  if (!with_owner) return;
  owner_ = CreateWindowExA(0, "Static", "Host", WS_OVERLAPPEDWINDOW | WS_VISIBLE, 50, 50, 600, 400,
                           nullptr, nullptr, nullptr, nullptr);
  SetActiveWindow(owner_);
}

void DialogSession::Call(INotifierConfig& config, const DialogRequest& request) {
  const Bstr directory(request.directory);
  BSTR const before = request.edited ? Bstr(*request.edited).release() : kNotToTouch;
  BSTR name = before;
  outcome_.result = MethodOf(request)(config, directory.get(), &name);
  if (name != before) outcome_.new_name = Bstr::ViewOf(name);
  if (name != kNotToTouch) SysFreeString(name);
}

HWND DialogSession::dialog() const {
  return FindDialog(thread_id_, nullptr);
}

HWND DialogSession::popup() const {
  HWND const bottom = dialog();
  HWND top = bottom;
  for (HWND next = bottom; next != nullptr; next = FindDialog(thread_id_, next)) {
    top = next;
  }
  return top == bottom ? nullptr : top;
}

HWND DialogSession::Control(int id) const {
  HWND control = GetDlgItem(dialog(), id);
  if (control == nullptr) throw std::runtime_error("no control " + std::to_string(id));
  return control;
}

std::string DialogSession::Text(int id) const {
  return WindowText(Control(id));
}

bool DialogSession::IsChecked(int id) const {
  return SendMessageA(Control(id), BM_GETCHECK, 0, 0) == BST_CHECKED;
}

HWND DialogSession::FocusedWindow() const {
  GUITHREADINFO information{};
  information.cbSize = sizeof information;
  if (GetGUIThreadInfo(thread_id_, &information) == FALSE) {
    throw std::runtime_error("nobody knows where the focus is");
  }
  return information.hwndFocus;
}

int DialogSession::Focus() const {
  HWND control = FocusedWindow();
  if (control == nullptr) return 0;
  // A combo box leaves the focus to the edit in it.
  if (WindowClass(GetParent(control)) == "ComboBox") control = GetParent(control);
  return GetDlgCtrlID(control);
}

void DialogSession::SetText(int id, const std::string& text) const {
  SendMessageA(Control(id), WM_SETTEXT, 0, reinterpret_cast<LPARAM>(text.c_str()));
}

void DialogSession::Click(int id) {
  StartClick(id);
  Settle();
}

void DialogSession::StartClick(int id) const {
  PostMessageA(Control(id), BM_CLICK, 0, 0);
}

void DialogSession::PressKey(WORD key) {
  HWND control = FocusedWindow();
  PostMessageA(control, WM_KEYDOWN, key, 1);
  PostMessageA(control, WM_KEYUP, key, static_cast<LPARAM>(0xC0000001));
  Settle();
}

void DialogSession::PressAltAnd(char letter) {
  constexpr LPARAM kAltIsDown = 0x20000001;
  PostMessageA(FocusedWindow(), WM_SYSCHAR, static_cast<WPARAM>(letter), kAltIsDown);
  Settle();
}

void DialogSession::Type(const std::string& text) {
  HWND control = FocusedWindow();
  for (const char letter : text) {
    PostMessageA(control, WM_CHAR, static_cast<unsigned char>(letter), 1);
  }
  Settle();
}

void DialogSession::AwaitSight() {
  AwaitThat([&] { return IsWindowVisible(dialog()) != FALSE; }, "the dialog is not seen");
  RedrawWindow(dialog(), nullptr, nullptr, RDW_INVALIDATE | RDW_ALLCHILDREN | RDW_UPDATENOW);
  Settle();
}

HWND DialogSession::AwaitPopup() {
  AwaitThat([&] { return popup() != nullptr && IsWindowVisible(popup()) != FALSE; },
            "nothing opens over the dialog");
  return popup();
}

void DialogSession::AwaitThat(const std::function<bool()>& condition, const char* otherwise) {
  for (DWORD waited = 0; waited < kPatience; waited += kLookAgain) {
    Settle();
    if (condition()) return;
    Sleep(kLookAgain);
  }
  throw std::runtime_error(otherwise);
}

void DialogSession::ClickInPopup(int id) {
  PostMessageA(GetDlgItem(popup(), id), BM_CLICK, 0, 0);
  Settle();
}

MessageBoxContent DialogSession::ReadMessageBox() const {
  HWND box = popup();
  if (box == nullptr) throw std::runtime_error("there is no message box");
  MessageBoxContent content{.text = WindowText(GetDlgItem(box, kMessageTextId)),
                            .caption = WindowText(box),
                            .buttons = {},
                            .has_error_icon = ShowsErrorIcon(box)};
  for (HWND button : VisibleButtons(box)) {
    content.buttons.push_back(WindowText(button));
  }
  return content;
}

void DialogSession::CloseMessageBox() {
  const std::vector<HWND> buttons = VisibleButtons(popup());
  if (buttons.empty()) throw std::runtime_error("the message box has no button");
  PostMessageA(buttons.front(), BM_CLICK, 0, 0);
  Settle();
}

bool DialogSession::StandsStill() const {
  DWORD_PTR answer = 0;
  return SendMessageTimeoutA(dialog(), WM_NULL, 0, 0, SMTO_NORMAL, kLongForADialog, &answer) == 0;
}

void DialogSession::Settle() {
  ResetEvent(settled_.get());
  PostMessageA(marker_, WM_APP, 0, reinterpret_cast<LPARAM>(settled_.get()));
  const std::array<HANDLE, 2> either = {settled_.get(), ended_.get()};
  if (WaitForMultipleObjects(static_cast<DWORD>(either.size()), either.data(), FALSE, kPatience) ==
      WAIT_TIMEOUT) {
    throw std::runtime_error("the dialog's thread does not come to rest");
  }
}

const DialogOutcome& DialogSession::Await() {
  if (WaitForSingleObject(ended_.get(), kPatience) != WAIT_OBJECT_0) {
    throw std::runtime_error("the dialog does not end");
  }
  return outcome_;
}

}  // namespace brantel
