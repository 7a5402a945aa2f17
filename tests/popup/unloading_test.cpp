// What happens to the search when the dialog closes, and when the host goes.
#include <windows.h>
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <functional>
#include <map>
#include <optional>
#include <string>
#include <vector>

#include "tests/module/allocation_ledger.h"
#include "tests/module/loaded_module.h"
#include "tests/module/portable_executable.h"
#include "tests/module/process_level.h"
#include "tests/module/scratch_directory.h"
#include "tests/popup/win_popup_fixture.h"
#include "tests/unit/thorough.h"

namespace brantel {
namespace {

bool IsLoaded() {
  return GetModuleHandleW(ModuleFile().c_str()) != nullptr;
}

void AwaitUnloading() {
  AwaitThat([] { return !IsLoaded(); }, "the module stays in the process");
}

class Unloading : public ::testing::Test {
 protected:
  // Opens the dialog and closes it at once. How many milliseconds the closing took.
  DWORD OpenAndClose(
      const LoadedModule& module, const std::function<void()>& meanwhile = [] {}) {
    DialogSession session(module,
                          {.notifier_class = kWinPopup, .directory = scratch_.path().wstring()});
    meanwhile();
    const DWORD before = GetTickCount();
    session.Click(kCancel);
    EXPECT_EQ(session.Await().result, E_FAIL);
    return GetTickCount() - before;
  }

  // Opens and closes dialogs while the network takes its time, lets the module go while searches
  // are under way, that of the last dialog at least, and waits for those.
  void CloseAtOnceManyTimes(int times) {
    constexpr DWORD kLong = 2500;  // half of what the slow network takes
    const std::size_t threads = CountThreads();
    int long_times = 0;
    {
      const LoadedModule module;
      for (int i = 0; i < times; ++i) {
        if (OpenAndClose(module) >= kLong) ++long_times;
      }
      stand_ins_.CloseGate();
      OpenAndClose(module, [this] { stand_ins_.AwaitArrival(); });
    }
    EXPECT_TRUE(IsLoaded());
    stand_ins_.OpenGate();
    AwaitUnloading();
    // What a thread has of the system itself is given back behind the module.
    AwaitThat([&] { return CountThreads() <= threads; }, "the thread of a search does not end");
    // On a busy machine some take long by themselves.
    EXPECT_LE(long_times, times / 2);
  }

  StandIns stand_ins_;
  ScratchDirectory scratch_;
};

TEST_F(Unloading, WaitsForTheSearchAndTheHostDoesNot) {
  stand_ins_.CloseGate();
  {
    const LoadedModule module;
    // A search that has not begun yet is not begun any more.
    OpenAndClose(module, [this] { stand_ins_.AwaitArrival(); });
    EXPECT_EQ(module.CanUnloadNow(), S_OK);  // no object is left
  }
  EXPECT_TRUE(IsLoaded());
  stand_ins_.OpenGate();
  AwaitUnloading();
}

// A network of networks, as deep as the search goes and without a name in it.
TEST_F(Unloading, IsSoonAlsoWhereTheNetworkHasNoNames) {
  stand_ins_.SetNetwork(
      L"+A +B +C +D +E +F +G +H;+B +A +C +D +E +F +G +H;+C +A +B +D +E +F +G +H;"
      L"+D +A +B +C +E +F +G +H;+E +A +B +C +D +F +G +H;+F +A +B +C +D +E +G +H;"
      L"+G +A +B +C +D +E +F +H;+H +A +B +C +D +E +F +G");
  stand_ins_.SetNetworkDelay(20);
  OpenAndClose(LoadedModule());
  AwaitUnloading();
}

TEST_F(Unloading, IsCalledOffByTheNextUse) {
  stand_ins_.CloseGate();
  std::optional<LoadedModule> module(std::in_place);
  OpenAndClose(*module);
  module.reset();
  module.emplace();
  stand_ins_.OpenGate();
  AwaitThat([&] { return stand_ins_.Report().back().starts_with("unloaded"); },
            "the search does not end");
  EXPECT_TRUE(IsLoaded());
  EXPECT_EQ(module->CreateNotifier(kWinPopup)->Shutdown(), S_OK);
  module.reset();
  AwaitUnloading();
}

// The libraries around the module stay loaded meanwhile: what they take and leave when they come
// and go is not the module's.
class LibrariesAround {
 public:
  LibrariesAround() {
    for (const std::string& name : PortableExecutable(ModuleFile()).ImportedLibraries()) {
      libraries_.push_back(LoadLibraryA(name.c_str()));
    }
    libraries_.push_back(LoadLibraryA("netapi32.dll"));
  }
  LibrariesAround(const LibrariesAround&) = delete;
  LibrariesAround& operator=(const LibrariesAround&) = delete;
  ~LibrariesAround() {
    for (HMODULE library : libraries_) {
      FreeLibrary(library);
    }
  }

 private:
  std::vector<HMODULE> libraries_;
};

TEST_F(Unloading, FollowsManyDialogsThatCloseAtOnceInASlowNetwork) {
  constexpr unsigned kAnswerTakes = 5000;
  const int times = IsThorough() ? 200 : 50;
  // Of blocks of the heap: what one in four dialogs would leave.
  const auto tolerance = static_cast<std::size_t>(times / 4);
  const LibrariesAround libraries_around;
  stand_ins_.SetNetwork(L"OPS PC1;SALES PC2");

  stand_ins_.SetNetworkDelay(500);
  CloseAtOnceManyTimes(times);  // the system has now made what it makes once
  const std::map<std::wstring, std::size_t> handles = CountHandles();
  const std::size_t handle_count = OpenHandles().size();
  const HeapLevel heaps = MeasureHeaps();
  const std::size_t thread_slots = FreeThreadSlots();
  const AllocationBalance balance;

  stand_ins_.SetNetworkDelay(kAnswerTakes);
  CloseAtOnceManyTimes(times);
  if (LevelsAreRough()) {
    EXPECT_LE(MeasureHeaps().bytes, heaps.bytes + HeapGrowth());
    EXPECT_LE(OpenHandles().size(), handle_count + 1);
  } else {
    EXPECT_LE(MeasureHeaps().blocks, heaps.blocks + tolerance);
    EXPECT_EQ(CountHandles(), handles);
  }
  EXPECT_EQ(FreeThreadSlots(), thread_slots);
  EXPECT_EQ(balance.Outstanding(), 0);
}

}  // namespace
}  // namespace brantel
