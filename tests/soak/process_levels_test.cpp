// A watch that saw nothing would let every leak pass.
#include <windows.h>
#include <gtest/gtest.h>

#include <array>

#include "tests/soak/process_levels.h"

namespace brantel {
namespace {

TEST(ProcessLevels, RiseByWhatIsTakenOfEachKind) {
  constexpr std::size_t kCount = 40;
  constexpr std::size_t kPages = std::size_t{1} << 20;
  // What is made once: with the first window, and by the first look.
  DestroyWindow(
      CreateWindowA("Static", "", 0, 0, 0, 0, 0, HWND_MESSAGE, nullptr, nullptr, nullptr));
  static_cast<void>(MeasureProcess());
  const ProcessLevels before = MeasureProcess();
  std::array<HBRUSH, kCount> brushes{};
  std::array<HWND, kCount> windows{};
  std::array<HANDLE, kCount> events{};
  for (std::size_t i = 0; i < kCount; ++i) {
    brushes.at(i) = CreateSolidBrush(RGB(1, 2, static_cast<BYTE>(i)));
    windows.at(i) =
        CreateWindowA("Static", "", 0, 0, 0, 0, 0, HWND_MESSAGE, nullptr, nullptr, nullptr);
    events.at(i) = CreateEventW(nullptr, FALSE, FALSE, nullptr);
  }
  void* const pages = VirtualAlloc(nullptr, kPages, MEM_RESERVE | MEM_COMMIT, PAGE_READWRITE);
  const ProcessLevels after = MeasureProcess();
  VirtualFree(pages, 0, MEM_RELEASE);
  for (std::size_t i = 0; i < kCount; ++i) {
    DeleteObject(brushes.at(i));
    DestroyWindow(windows.at(i));
    CloseHandle(events.at(i));
  }

  EXPECT_EQ(after.gdi_objects, before.gdi_objects + kCount);
  EXPECT_EQ(after.user_objects, before.user_objects + kCount);
  EXPECT_EQ(after.handles, before.handles + kCount);
  EXPECT_GE(after.committed, before.committed + kPages);
  const ProcessLevels in_the_end = MeasureProcess();
  EXPECT_EQ(in_the_end.gdi_objects, before.gdi_objects);
  EXPECT_EQ(in_the_end.user_objects, before.user_objects);
  EXPECT_EQ(in_the_end.handles, before.handles);
}

}  // namespace
}  // namespace brantel
