#include <windows.h>
#include <gtest/gtest.h>

#include "tests/module/expected_classes.h"
#include "tests/module/loaded_module.h"
#include "tests/module/recording_host.h"
#include "tests/module/sockets_work.h"

namespace brantel {
namespace {

class SocketsBinding : public ::testing::TestWithParam<ExpectedClass> {
 protected:
  LoadedModule module_;
  RecordingHost host_;
  ComPointer<INotifier> notifier_ = module_.CreateNotifier(GetParam());
};

INSTANTIATE_TEST_SUITE_P(Classes, SocketsBinding, ::testing::Values(kSMTPMail, kWinPopup),
                         NameOfClass);

TEST_P(SocketsBinding, KeepsTheSocketsLibraryStarted) {
  ASSERT_FALSE(SocketsWork());
  ASSERT_EQ(notifier_->Initialize(&host_), S_OK);
  EXPECT_TRUE(SocketsWork());
  ASSERT_EQ(notifier_->Initialize(&host_), S_OK);
  ASSERT_EQ(notifier_->Shutdown(), S_OK);
  EXPECT_FALSE(SocketsWork());
  ASSERT_EQ(notifier_->Shutdown(), S_OK);
}

TEST_P(SocketsBinding, StartsTheSocketsLibraryAnewForTheNextHost) {
  ASSERT_EQ(notifier_->Initialize(&host_), S_OK);
  ASSERT_EQ(notifier_->Shutdown(), S_OK);
  ASSERT_EQ(notifier_->Initialize(&host_), S_OK);
  EXPECT_TRUE(SocketsWork());
  ASSERT_EQ(notifier_->Shutdown(), S_OK);
  EXPECT_FALSE(SocketsWork());
}

TEST_P(SocketsBinding, LeavesTheSocketsLibraryAsItWasWhenItFails) {
  EXPECT_EQ(notifier_->Initialize(nullptr), E_FAIL);
  EXPECT_FALSE(SocketsWork());
  host_.query_result = E_NOINTERFACE;
  EXPECT_EQ(notifier_->Initialize(&host_), E_FAIL);
  EXPECT_FALSE(SocketsWork());
}

TEST_P(SocketsBinding, StartsTheSocketsLibraryOnceForAHostThatBindsItselfWhenItIsAsked) {
  host_.during_query = [&] {
    host_.during_query = nullptr;
    EXPECT_EQ(notifier_->Initialize(&host_), S_OK);
  };
  ASSERT_EQ(notifier_->Initialize(&host_), S_OK);
  EXPECT_TRUE(SocketsWork());
  ASSERT_EQ(notifier_->Shutdown(), S_OK);
  EXPECT_FALSE(SocketsWork());
}

TEST_P(SocketsBinding, StopsTheSocketsLibraryWithTheObject) {
  ASSERT_EQ(notifier_->Initialize(&host_), S_OK);
  notifier_ = {};
  EXPECT_FALSE(SocketsWork());
}

TEST_P(SocketsBinding, IsOfTheOneObjectAndNotOfItsClass) {
  const auto other = module_.CreateNotifier(GetParam());
  ASSERT_EQ(notifier_->Initialize(&host_), S_OK);
  ASSERT_EQ(other->Initialize(&host_), S_OK);
  ASSERT_EQ(other->Shutdown(), S_OK);
  EXPECT_TRUE(SocketsWork());
  ASSERT_EQ(notifier_->Shutdown(), S_OK);
  EXPECT_FALSE(SocketsWork());
}

}  // namespace
}  // namespace brantel
