// The system's network neighbourhood before a network of the test's own.
#include "win_popup/network_neighbourhood_win32.h"

#include <windows.h>
#include <gtest/gtest.h>
#include <winnetwk.h>

#include <new>

#include "tests/module/import_patch.h"
#include "tests/unit/allocation_counter.h"

namespace brantel {
namespace {

int opened = 0;
int closed = 0;
DWORD answer = NO_ERROR;

HANDLE const kLevel = reinterpret_cast<HANDLE>(0x1234);

DWORD WINAPI OpenEnumeration(DWORD, DWORD, DWORD, LPNETRESOURCEA, LPHANDLE level) {
  *level = kLevel;  // also where it fails: nobody may rely on that
  if (answer == NO_ERROR) ++opened;
  return answer;
}

DWORD WINAPI CloseEnumeration(HANDLE level) {
  EXPECT_EQ(level, kLevel);
  ++closed;
  return NO_ERROR;
}

class SystemNeighbourhoodTest : public ::testing::Test {
 protected:
  SystemNeighbourhoodTest() {
    opened = closed = 0;
    answer = NO_ERROR;
  }

  HMODULE const program_ = GetModuleHandleW(nullptr);
  ImportPatch open_{program_, "WNetOpenEnumA", reinterpret_cast<void*>(&OpenEnumeration)};
  ImportPatch close_{program_, "WNetCloseEnum", reinterpret_cast<void*>(&CloseEnumeration)};
  SystemNeighbourhood neighbourhood_;
};

TEST_F(SystemNeighbourhoodTest, LeavesNoLevelOpenWhenMemoryRunsOut) {
  FailNextAllocation();
  EXPECT_THROW(neighbourhood_.Open(nullptr), std::bad_alloc);
  EXPECT_EQ(opened, closed);
}

TEST_F(SystemNeighbourhoodTest, ClosesTheLevel) {
  auto level = neighbourhood_.Open(nullptr);
  ASSERT_NE(level, nullptr);
  EXPECT_EQ(opened, 1);
  EXPECT_EQ(closed, 0);
  level.reset();
  EXPECT_EQ(closed, 1);
}

TEST_F(SystemNeighbourhoodTest, ClosesNothingThatCouldNotBeOpened) {
  answer = ERROR_NO_NETWORK;
  EXPECT_EQ(neighbourhood_.Open(nullptr), nullptr);
  EXPECT_EQ(closed, 0);
}

}  // namespace
}  // namespace brantel
