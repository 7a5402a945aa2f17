#include "tests/module/help_viewer.h"

#include <cstring>
#include <stdexcept>

#include "tests/module/patience.h"

namespace brantel {
namespace {

// The window by which the system's WinHelp knows a viewer that is running.
constexpr const char* kViewerClass = "MS_WINHELP";

// How the system's WinHelp tells the viewer what to show.
struct ViewerMessage {
  WORD size;
  WORD command;
  LONG data;
  LONG reserved;
  WORD file_offset;  // of the file's name, from the message's beginning; 0 for none
  WORD data_offset;
};

HelpRequest ToRequest(const COPYDATASTRUCT& copied) {
  ViewerMessage message{};
  if (copied.cbData < sizeof message) return {};
  std::memcpy(&message, copied.lpData, sizeof message);
  HelpRequest request{.command = message.command, .data = static_cast<unsigned long>(message.data)};
  if (message.file_offset != 0) {
    request.file = static_cast<const char*>(copied.lpData) + message.file_offset;
  }
  return request;
}

}  // namespace

std::ostream& operator<<(std::ostream& out, const HelpRequest& request) {
  return out << request.file << " command " << request.command << " data " << request.data;
}

HelpViewer::HelpViewer()
    : ready_(CreateEventW(nullptr, FALSE, FALSE, nullptr)), thread_([this] { Run(); }) {
  if (WaitForSingleObject(ready_.get(), kPatience) != WAIT_OBJECT_0 || window_ == nullptr) {
    throw std::runtime_error("there is no help viewer");
  }
}

HelpViewer::~HelpViewer() {
  PostMessageA(window_, WM_CLOSE, 0, 0);
}

LRESULT CALLBACK HelpViewer::WindowProcedure(HWND window, UINT message, WPARAM wparam,
                                             LPARAM lparam) {
  if (message == WM_COPYDATA) {
    auto* viewer = reinterpret_cast<HelpViewer*>(GetWindowLongPtrA(window, GWLP_USERDATA));
    viewer->requests_.push_back(ToRequest(*reinterpret_cast<const COPYDATASTRUCT*>(lparam)));
    return TRUE;
  }
  if (message == WM_DESTROY) PostQuitMessage(0);
  return DefWindowProcA(window, message, wparam, lparam);
}

void HelpViewer::Run() {
  WNDCLASSA window_class{};
  window_class.lpfnWndProc = WindowProcedure;
  window_class.hInstance = GetModuleHandleA(nullptr);
  window_class.lpszClassName = kViewerClass;
  RegisterClassA(&window_class);
  window_ = CreateWindowExA(0, kViewerClass, "", WS_OVERLAPPED, 0, 0, 0, 0, nullptr, nullptr,
                            window_class.hInstance, nullptr);
  SetWindowLongPtrA(window_, GWLP_USERDATA, reinterpret_cast<LONG_PTR>(this));
  SetEvent(ready_.get());
  for (MSG message{}; GetMessageA(&message, nullptr, 0, 0) > 0;) {
    DispatchMessageA(&message);
  }
  UnregisterClassA(kViewerClass, window_class.hInstance);
}

}  // namespace brantel
