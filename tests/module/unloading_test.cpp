#include <windows.h>
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <vector>

#include "tests/module/allocation_ledger.h"
#include "tests/module/expected_classes.h"
#include "tests/module/loaded_module.h"
#include "tests/module/process_level.h"
#include "tests/module/recording_host.h"

namespace brantel {
namespace {

bool IsLoaded() {
  return GetModuleHandleW(ModuleFile().c_str()) != nullptr;
}

TEST(Unloading, TakesTheModuleOutOfTheProcess) {
  {
    const LoadedModule module;
    ASSERT_TRUE(IsLoaded());
    const auto notifier = module.CreateNotifier(kLaunchProgram);
  }
  EXPECT_FALSE(IsLoaded());
}

// What a host does that loads the module for an alert at a time.
void UseAllClassesOnce(RecordingHost& host) {
  const LoadedModule module;
  for (const ExpectedClass& expected : kExpectedClasses) {
    const auto notifier = module.CreateNotifier(expected);
    notifier->Initialize(&host);
    notifier->Shutdown();
  }
}

TEST(Unloading, GivesBackWhatTheProcessHasOfEachKind) {
  constexpr int kWarmUpRounds = 60;
  constexpr int kRounds = 200;
  // Less than a smallest heap block (8 bytes) for each factory of each round.
  constexpr std::size_t kHeapTolerance = 4096;
  RecordingHost host;
  for (int i = 0; i < kWarmUpRounds; ++i)
    UseAllClassesOnce(host);
  host.queries = {};
  const std::vector<HANDLE> handles = OpenHandles();
  const std::size_t thread_slots = FreeThreadSlots();
  const HeapLevel heaps = MeasureHeaps();
  const AllocationBalance balance;

  for (int i = 0; i < kRounds; ++i) {
    UseAllClassesOnce(host);
    host.queries = {};
  }
  EXPECT_LE(MeasureHeaps().bytes, heaps.bytes + kHeapTolerance);
  EXPECT_EQ(balance.Outstanding(), 0);
  EXPECT_EQ(FreeThreadSlots(), thread_slots);
  EXPECT_EQ(OpenHandles().size(), handles.size());
}

}  // namespace
}  // namespace brantel
