#include <windows.h>
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "system/windows/bstr_win32.h"
#include "tests/module/allocation_ledger.h"
#include "tests/module/expected_classes.h"
#include "tests/module/instance_bytes.h"
#include "tests/module/loaded_module.h"
#include "tests/module/process_level.h"
#include "tests/module/recording_host.h"
#include "tests/module/scratch_directory.h"

namespace brantel {
namespace {

// A single smallest heap block (8 bytes) lost in every round would add 80,000 bytes, one lost in
// every round of a single class more than 11,000.
constexpr int kBindings = 10000;
constexpr int kWarmUpBindings = 700;

// What the process holds, to be compared before and after.
class LevelWatch {
 public:
  void ExpectUnchanged() const {
    const HeapLevel heaps = MeasureHeaps();
    EXPECT_LE(heaps.bytes, heaps_.bytes + HeapGrowth());
    EXPECT_EQ(balance_.Outstanding(), 0);
    EXPECT_EQ(balance_.StrayFrees(), 0);
    EXPECT_EQ(OpenHandles(), handles_);
  }

 private:
  std::vector<HANDLE> handles_ = OpenHandles();
  AllocationBalance balance_;
  HeapLevel heaps_ = MeasureHeaps();
};

class ProcessLevel : public ::testing::Test {
 protected:
  // The first rounds make what is made once: class factories, caches of the system.
  template <typename Round>
  void ExpectUnchangedBy(Round round) {
    for (int i = 0; i < kWarmUpBindings; ++i)
      round(i);
    host_.queries = {};
    host_.log_calls = {};
    const LevelWatch watch;
    for (int i = 0; i < kBindings; ++i) {
      round(i);
      host_.queries.clear();
      host_.log_calls.clear();
      host_.expand_calls.clear();
    }
    host_.queries = {};
    host_.log_calls = {};
    host_.expand_calls = {};
    watch.ExpectUnchanged();
    EXPECT_EQ(host_.references(), 1);
    EXPECT_EQ(module_.CanUnloadNow(), S_OK);
  }

  static const ExpectedClass& ClassOfRound(int round) {
    return kExpectedClasses.at(static_cast<std::size_t>(round) % kExpectedClasses.size());
  }

  LoadedModule module_;
  RecordingHost host_;
};

TEST_F(ProcessLevel, IsUnchangedBy10000RoundsFromCreationToRelease) {
  int bound = 0;
  ExpectUnchangedBy([&](int round) {
    const auto notifier = module_.CreateNotifier(ClassOfRound(round));
    if (notifier->Initialize(&host_) == S_OK) ++bound;
    notifier->Shutdown();
  });
  // All classes but perhaps one bind.
  constexpr int kClasses = static_cast<int>(kExpectedClasses.size());
  EXPECT_GE(bound, (kBindings + kWarmUpBindings) / kClasses * (kClasses - 1));
}

TEST_F(ProcessLevel, IsUnchangedBy10000RoundsWithoutShutdown) {
  ExpectUnchangedBy([&](int round) {
    const auto notifier = module_.CreateNotifier(ClassOfRound(round));
    notifier->Initialize(&host_);
  });
}

TEST_F(ProcessLevel, IsUnchangedBy10000RefusedObjects) {
  ExpectUnchangedBy([&](int round) {
    void* object = nullptr;
    const auto factory = module_.FactoryOf(ClassOfRound(round));
    factory->CreateInstance(nullptr, ToGuid(kDispatchIid), &object);
    factory->CreateInstance(&host_, ToGuid(kUnknownIid), &object);
  });
}

TEST_F(ProcessLevel, IsUnchangedBy10000AlertsThatCannotBeLoaded) {
  const Bstr missing(L"Z:\\no such folder\\no such file");
  ExpectUnchangedBy([&](int) {
    const auto notifier = module_.CreateNotifier(kLaunchProgram);
    notifier->Initialize(&host_);
    EXPECT_EQ(notifier->Send(missing.get()), E_FAIL);
  });
}

TEST_F(ProcessLevel, IsUnchangedBy10000AlertsThatTheHostRefuses) {
  const ScratchDirectory scratch;
  const Bstr instance(
      scratch.Write(L"alert", InstanceBytes({"program", "folder", "%D"})).wstring());
  host_.expansion = {.result = E_ACCESSDENIED};
  ExpectUnchangedBy([&](int) {
    const auto notifier = module_.CreateNotifier(kLaunchProgram);
    notifier->Initialize(&host_);
    EXPECT_EQ(notifier->Send(instance.get()), E_ACCESSDENIED);
  });
}

}  // namespace
}  // namespace brantel
