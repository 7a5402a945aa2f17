#include "telephone/message_pump_win32.h"

#include <windows.h>
#include <gtest/gtest.h>

#include <functional>
#include <thread>

#include "system/windows/handle_win32.h"

namespace brantel {
namespace {

// A wait that nothing ends takes 100 milliseconds. On a busy machine so may some of those that are
// ended, but not all of so many.
constexpr int kManyTimes = 50;
constexpr int kSomeTimes = 5;
constexpr DWORD kAtOnce = 50;  // milliseconds

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
  void Send(UINT message) const { SendMessageA(window_, message, 0, 0); }

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
  pump.PumpUntil([&] { return window.told == 2; }, kNoEvent);
  EXPECT_EQ(window.told, 2);
  pump.PumpUntil([&] { return window.told == 3; }, kNoEvent);
}

TEST(ThreadMessagePump, HandlesNothingWhenItIsOverAtOnce) {
  CountingWindow window;
  window.Post(WM_APP);
  ThreadMessagePump().PumpUntil([] { return true; }, kNoEvent);
  EXPECT_EQ(window.told, 0);
}

TEST(ThreadMessagePump, TranslatesKeys) {
  CountingWindow window;
  window.Post(WM_KEYDOWN, 'A');
  ThreadMessagePump().PumpUntil([&] { return window.characters == 1; }, kNoEvent);
  EXPECT_EQ(window.characters, 1);
}

TEST(ThreadMessagePump, AsksAlsoWhenThereAreNoMessages) {
  int asked = 0;
  ThreadMessagePump().PumpUntil([&] { return ++asked == 10; }, kNoEvent);
  EXPECT_EQ(asked, 10);
}

class Event {
 public:
  [[nodiscard]] EventHandle handle() const { return reinterpret_cast<EventHandle>(event_.get()); }
  [[nodiscard]] bool IsSet() const { return WaitForSingleObject(event_.get(), 0) == WAIT_OBJECT_0; }
  void Set() const { SetEvent(event_.get()); }
  void Reset() const { ResetEvent(event_.get()); }

 private:
  Handle event_{CreateEventW(nullptr, TRUE, FALSE, nullptr)};
};

TEST(ThreadMessagePump, AsksSeldomWhileNothingHappens) {
  const Event event;
  std::thread other([&] {
    Sleep(1000);
    event.Set();
  });
  int asked = 0;
  ThreadMessagePump().PumpUntil(
      [&] {
        ++asked;
        return event.IsSet();
      },
      event.handle());
  other.join();
  EXPECT_LT(asked, 100);
}

// Does this many times. How often it was over at once.
int QuickTimes(const std::function<void(int times)>& wait) {
  int quick = 0;
  for (int times = 1; times <= kManyTimes; ++times) {
    const DWORD start = GetTickCount();
    wait(times);
    if (GetTickCount() - start < kAtOnce) ++quick;
  }
  return quick;
}

// Waits many times for what another thread does. How often that was over at once.
int QuickWaits(const std::function<void()>& done_by_other,
               const std::function<bool(int times)>& is_over, EventHandle event) {
  ThreadMessagePump pump;
  return QuickTimes([&](int times) {
    const std::jthread other([&] {
      Sleep(5);  // until this thread sleeps, most of the time
      done_by_other();
    });
    pump.PumpUntil([&] { return is_over(times); }, event);
  });
}

TEST(ThreadMessagePump, IsAwakeAtOnceForAMessage) {
  const CountingWindow window;
  EXPECT_GE(QuickWaits([&] { window.Post(WM_APP); },
                       [&](int times) { return window.told == times; }, kNoEvent),
            kSomeTimes);
}

TEST(ThreadMessagePump, IsAwakeAtOnceForAMessageThatIsSent) {
  const CountingWindow window;
  EXPECT_GE(QuickWaits([&] { window.Send(WM_APP); },
                       [&](int times) { return window.told == times; }, kNoEvent),
            kSomeTimes);
}

TEST(ThreadMessagePump, IsAwakeAtOnceForTheEvent) {
  const Event event;
  EXPECT_GE(QuickWaits([&] { event.Set(); },
                       [&](int) {
                         const bool is_set = event.IsSet();
                         if (is_set) event.Reset();
                         return is_set;
                       },
                       event.handle()),
            kSomeTimes);
}

TEST(ThreadMessagePump, DoesNotSleepWhereTheEventIsSetBefore) {
  const Event event;
  event.Set();
  const int quick = QuickTimes([&](int) {
    int asked = 0;
    ThreadMessagePump().PumpUntil([&] { return ++asked == 3; }, event.handle());
  });
  EXPECT_GE(quick, kSomeTimes);
}

// As a driver or a host may, by PM_NOREMOVE.
TEST(ThreadMessagePump, DoesNotSleepOverAMessageThatSomebodyHasLookedAt) {
  const CountingWindow window;
  const int quick = QuickTimes([&](int times) {
    int asked = 0;
    ThreadMessagePump().PumpUntil(
        [&] {
          if (++asked == 2) {  // just before it would sleep
            window.Post(WM_APP);
            MSG message;
            EXPECT_TRUE(PeekMessageA(&message, nullptr, 0, 0, PM_NOREMOVE));
          }
          return window.told == times;
        },
        kNoEvent);
  });
  EXPECT_GE(quick, kSomeTimes);
}

TEST(ThreadMessagePump, LeavesTheWishToQuitForTheHost) {
  CountingWindow window;
  PostQuitMessage(7);
  int asked = 0;
  ThreadMessagePump().PumpUntil([&] { return ++asked == 10; }, kNoEvent);
  MSG message{};
  ASSERT_TRUE(PeekMessageA(&message, nullptr, 0, 0, PM_REMOVE));
  EXPECT_EQ(message.message, WM_QUIT);
  EXPECT_EQ(message.wParam, 7U);
}

}  // namespace
}  // namespace brantel
