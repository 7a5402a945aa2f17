#include "voice/message_pump_win32.h"

#include <windows.h>
#include <gtest/gtest.h>

namespace brantel {
namespace {

// A window of this thread that counts what it is told.
class CountingWindow {
 public:
  CountingWindow() {
    SetWindowLongPtrA(window_, GWLP_USERDATA, reinterpret_cast<LONG_PTR>(this));
    SetWindowLongPtrA(window_, GWLP_WNDPROC, reinterpret_cast<LONG_PTR>(&Handle));
  }
  CountingWindow(const CountingWindow&) = delete;
  CountingWindow& operator=(const CountingWindow&) = delete;
  ~CountingWindow() { DestroyWindow(window_); }

  int told = 0;
  int characters = 0;

  void Post(UINT message, WPARAM value = 0) const { PostMessageA(window_, message, value, 0); }

 private:
  static LRESULT CALLBACK Handle(HWND window, UINT message, WPARAM first, LPARAM second) {
    auto* const self = reinterpret_cast<CountingWindow*>(GetWindowLongPtrA(window, GWLP_USERDATA));
    if (message == WM_APP) ++self->told;
    if (message == WM_CHAR) ++self->characters;
    return DefWindowProcA(window, message, first, second);
  }

  HWND window_ =
      CreateWindowA("STATIC", "", 0, 0, 0, 0, 0, HWND_MESSAGE, nullptr, nullptr, nullptr);
};

TEST(ThreadMessagePump, HandlesTheThreadsMessagesUntilItIsOver) {
  CountingWindow window;
  for (int i = 0; i < 3; ++i)
    window.Post(WM_APP);
  ThreadMessagePump pump;
  pump.PumpUntil([&] { return window.told == 2; });
  EXPECT_EQ(window.told, 2);
  pump.PumpUntil([&] { return window.told == 3; });
}

TEST(ThreadMessagePump, HandlesNothingWhenItIsOverAtOnce) {
  CountingWindow window;
  window.Post(WM_APP);
  ThreadMessagePump().PumpUntil([] { return true; });
  EXPECT_EQ(window.told, 0);
}

TEST(ThreadMessagePump, TranslatesKeys) {
  CountingWindow window;
  window.Post(WM_KEYDOWN, 'A');
  ThreadMessagePump().PumpUntil([&] { return window.characters == 1; });
  EXPECT_EQ(window.characters, 1);
}

TEST(ThreadMessagePump, AsksAlsoWhenThereAreNoMessages) {
  int asked = 0;
  ThreadMessagePump().PumpUntil([&] { return ++asked == 1000; });
  EXPECT_EQ(asked, 1000);
}

TEST(ThreadMessagePump, LeavesTheWishToQuitForTheHost) {
  CountingWindow window;
  PostQuitMessage(7);
  int asked = 0;
  ThreadMessagePump().PumpUntil([&] { return ++asked == 10; });
  MSG message{};
  ASSERT_TRUE(PeekMessageA(&message, nullptr, 0, 0, PM_REMOVE));
  EXPECT_EQ(message.message, WM_QUIT);
  EXPECT_EQ(message.wParam, 7U);
}

}  // namespace
}  // namespace brantel
