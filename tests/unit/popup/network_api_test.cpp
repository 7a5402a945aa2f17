#include "popup/network_api.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "tests/unit/popup/fake_network_system.h"

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

TEST_F(NetworkApiTest, LeavesTheLibraryToThoseWhoHoldIt) {
  auto held = api_.LibraryWith(NetworkEntry::kMessageNameEnum);
  api_.Free();
  EXPECT_THAT(system_.calls, ElementsAre("load netapi32.dll"));
  held.reset();
  EXPECT_THAT(system_.calls, ElementsAre("load netapi32.dll", "free"));
}

}  // namespace
}  // namespace brantel
