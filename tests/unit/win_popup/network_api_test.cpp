#include "win_popup/network_api.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <atomic>
#include <memory>
#include <string>
#include <thread>

#include "tests/unit/win_popup/fake_network_system.h"

namespace brantel {
namespace {

using ::testing::ElementsAre;
using ::testing::IsEmpty;

TEST(NetworkEntryNames, AreThoseOfTheLibrary) {
  EXPECT_THAT(kNetworkEntryNames,
              ElementsAre("NetApiBufferFree", "NetServerEnum", "NetWkstaGetInfo",
                          "NetMessageBufferSend", "NetMessageNameEnum"));
}

class NetworkApiTest : public ::testing::Test {
 protected:
  FakeNetworkSystem system_;
  NetworkApi api_{system_};
};

TEST_F(NetworkApiTest, LoadsTheLibraryOfTheWindowsNtFamily) {
  EXPECT_EQ(api_.LoadNetworkApi(), LibraryMode::kWindowsNt);
  EXPECT_EQ(static_cast<int>(api_.LoadNetworkApi()), 1);
  EXPECT_THAT(system_.calls, ElementsAre("load netapi32.dll"));
}

TEST_F(NetworkApiTest, LoadsTheLibraryOfTheWindows95Family) {
  system_.family = WindowsFamily::kWindows95;
  EXPECT_EQ(api_.LoadNetworkApi(), LibraryMode::kWindows95);
  EXPECT_EQ(static_cast<int>(api_.LoadNetworkApi()), 2);
  EXPECT_THAT(system_.calls, ElementsAre("load svrapi.dll"));
}

TEST_F(NetworkApiTest, LoadsNothingOnOtherSystems) {
  system_.family = WindowsFamily::kOther;
  EXPECT_EQ(api_.LoadNetworkApi(), LibraryMode::kNone);
  EXPECT_EQ(static_cast<int>(api_.LoadNetworkApi()), 0);
  EXPECT_THAT(system_.calls, IsEmpty());
}

TEST_F(NetworkApiTest, HasNothingWhenTheLibraryCannotBeLoaded) {
  system_.has_library = false;
  EXPECT_EQ(api_.LoadNetworkApi(), LibraryMode::kNone);
  EXPECT_EQ(api_.LibraryWith(NetworkEntry::kMessageBufferSend), nullptr);
}

TEST_F(NetworkApiTest, FreesALibraryWithoutTheEntriesThatItMustHave) {
  for (const WindowsFamily family : {WindowsFamily::kWindowsNt, WindowsFamily::kWindows95}) {
    for (const NetworkEntry entry : {NetworkEntry::kApiBufferFree, NetworkEntry::kWkstaGetInfo}) {
      system_.family = family;
      system_.missing = {entry};
      system_.calls.clear();
      EXPECT_EQ(api_.LoadNetworkApi(), LibraryMode::kNone);
      EXPECT_EQ(system_.calls.back(), "free");
    }
  }
}

TEST_F(NetworkApiTest, KeepsALibraryWithoutTheOtherEntries) {
  system_.missing = {NetworkEntry::kServerEnum, NetworkEntry::kMessageBufferSend,
                     NetworkEntry::kMessageNameEnum};
  EXPECT_EQ(api_.LoadNetworkApi(), LibraryMode::kWindowsNt);
  EXPECT_THAT(system_.calls, ElementsAre("load netapi32.dll"));
}

TEST_F(NetworkApiTest, TriesAgainAfterAFailure) {
  system_.missing = {NetworkEntry::kWkstaGetInfo};
  EXPECT_EQ(api_.LoadNetworkApi(), LibraryMode::kNone);
  system_.missing.clear();
  EXPECT_EQ(api_.LoadNetworkApi(), LibraryMode::kWindowsNt);
  EXPECT_THAT(system_.calls, ElementsAre("load netapi32.dll", "free", "load netapi32.dll"));
}

TEST_F(NetworkApiTest, OffersTheLibraryForTheEntriesThatItHas) {
  system_.missing = {NetworkEntry::kMessageNameEnum};
  EXPECT_NE(api_.LibraryWith(NetworkEntry::kMessageBufferSend), nullptr);
  EXPECT_EQ(api_.LibraryWith(NetworkEntry::kMessageNameEnum), nullptr);
  EXPECT_THAT(system_.calls, ElementsAre("load netapi32.dll"));
}

TEST_F(NetworkApiTest, OffersNoLibraryOfTheWindows95Family) {
  system_.family = WindowsFamily::kWindows95;
  EXPECT_EQ(api_.LibraryWith(NetworkEntry::kMessageBufferSend), nullptr);
  EXPECT_EQ(api_.LibraryWith(NetworkEntry::kMessageNameEnum), nullptr);
}

TEST_F(NetworkApiTest, FreesTheLibraryAndLoadsItAnew) {
  EXPECT_EQ(api_.LoadNetworkApi(), LibraryMode::kWindowsNt);
  api_.Free();
  api_.Free();
  EXPECT_THAT(system_.calls, ElementsAre("load netapi32.dll", "free"));
  EXPECT_EQ(api_.LoadNetworkApi(), LibraryMode::kWindowsNt);
  EXPECT_EQ(system_.calls.back(), "load netapi32.dll");
}

// A system whose library is let go while somebody asks it for its entries, as another thread may.
class FleetingLibrary final : public NetworkLibrary {
 public:
  explicit FleetingLibrary(NetworkApi*& api) : api_(api) {}
  FleetingLibrary(const FleetingLibrary&) = delete;
  FleetingLibrary& operator=(const FleetingLibrary&) = delete;
  ~FleetingLibrary() override { name_ = "gone"; }

  [[nodiscard]] bool Has(NetworkEntry) const override {
    if (api_ != nullptr) api_->Free();
    return name_ == "loaded";
  }
  bool SendMessageBuffer(const std::u16string&, std::u16string_view) override {
    return name_ == "loaded";
  }
  std::vector<std::u16string> MessageNames() override { return {}; }

 private:
  NetworkApi*& api_;
  std::string name_ = "loaded";
};

class FleetingSystem final : public NetworkSystem {
 public:
  NetworkApi* freed = nullptr;

  WindowsFamily Family() override { return WindowsFamily::kWindowsNt; }
  std::unique_ptr<NetworkLibrary> Load(std::string_view) override {
    return std::make_unique<FleetingLibrary>(freed);
  }
};

TEST(FleetingNetworkLibrary, IsKeptByWhoIsAboutToUseIt) {
  FleetingSystem system;
  NetworkApi api(system);
  ASSERT_EQ(api.LoadNetworkApi(), LibraryMode::kWindowsNt);
  system.freed = &api;
  const auto library = api.LibraryWith(NetworkEntry::kMessageBufferSend);
  ASSERT_NE(library, nullptr);
  EXPECT_TRUE(library->SendMessageBuffer(u"pc9", u""));
}

TEST(FleetingNetworkLibrary, IsThereForOneThreadWhileAnotherLetsItGo) {
  constexpr int kRounds = 20000;
  FleetingSystem system;
  NetworkApi api(system);
  std::atomic<bool> is_over = false;
  std::thread freeing([&] {
    while (!is_over)
      api.Free();
  });
  int delivered = 0;
  for (int round = 0; round < kRounds; ++round) {
    const auto library = api.LibraryWith(NetworkEntry::kMessageBufferSend);
    if (library && library->SendMessageBuffer(u"pc9", u"")) ++delivered;
  }
  is_over = true;
  freeing.join();
  EXPECT_EQ(delivered, kRounds);
}

TEST_F(NetworkApiTest, LeavesTheLibraryToThoseWhoHoldIt) {
  auto held = api_.LibraryWith(NetworkEntry::kMessageNameEnum);
  api_.Free();
  EXPECT_THAT(system_.calls, ElementsAre("load netapi32.dll"));
  held.reset();
  EXPECT_THAT(system_.calls, ElementsAre("load netapi32.dll", "free"));
}

}  // namespace
}  // namespace brantel
