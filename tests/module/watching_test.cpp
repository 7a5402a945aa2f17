// The means by which the other tests watch the process, tried on what is known to go astray: a
// watch that saw nothing here would let every leak pass there.
#include <windows.h>
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <oleauto.h>

#include <cstdlib>
#include <vector>

#include "tests/module/allocation_ledger.h"
#include "tests/module/process_level.h"
#include "tests/module/started_program.h"

namespace brantel {
namespace {

using ::testing::ElementsAre;
using ::testing::IsEmpty;

TEST(AllocationLedger, SeesABstrThatIsNotFreed) {
  const AllocationBalance balance;
  BSTR text = SysAllocString(L"text");
  EXPECT_EQ(balance.Outstanding(), 1);

  SysReAllocString(&text, L"another and longer text");
  EXPECT_EQ(balance.Outstanding(), 1);
  SysFreeString(text);
  EXPECT_EQ(balance.Outstanding(), 0);
  EXPECT_EQ(balance.StrayFrees(), 0);
}

TEST(AllocationLedger, SeesAFreeOfWhatIsNotAllocated) {
  const AllocationBalance balance;
  // Of the heap that the task memory is taken from, so that the free itself does no harm.
  CoTaskMemFree(HeapAlloc(GetProcessHeap(), 0, 16));

  EXPECT_EQ(balance.StrayFrees(), 1);
  EXPECT_EQ(balance.Outstanding(), 0);
}

TEST(HeapLevel, RisesByWhatIsNotFreed) {
  const HeapLevel before = MeasureHeaps();
  std::vector<void*> blocks(1000);
  for (void*& block : blocks)
    block = HeapAlloc(GetProcessHeap(), 0, 16);
  const HeapLevel with_blocks = MeasureHeaps();
  for (void* block : blocks)
    HeapFree(GetProcessHeap(), 0, block);

  EXPECT_GE(with_blocks.bytes, before.bytes + 16000);
  if (!LevelsAreRough()) {
    EXPECT_GE(with_blocks.blocks, before.blocks + 1000);
  }
}

TEST(HandleWatch, TellsTheNewHandles) {
  const HandleWatch watch;
  EXPECT_THAT(watch.NewHandles(), IsEmpty());
  HANDLE event = CreateEventW(nullptr, FALSE, FALSE, nullptr);

  EXPECT_THAT(watch.NewHandles(), ElementsAre(event));
  CloseHandle(event);
  EXPECT_THAT(watch.NewHandles(), IsEmpty());
}

}  // namespace
}  // namespace brantel
