#include <windows.h>
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "system/windows/bstr_win32.h"
#include "tests/module/expected_classes.h"
#include "tests/module/loaded_module.h"
#include "tests/module/recording_host.h"

namespace brantel {
namespace {

using ::testing::ElementsAre;
using ::testing::IsEmpty;
using ::testing::ValuesIn;

class Binding : public ::testing::TestWithParam<ExpectedClass> {
 protected:
  LoadedModule module_;
  // Before the notifier, which may hold them to its end.
  RecordingHost host_;
  RecordingHost second_;
  ComPointer<INotifier> notifier_ = module_.CreateNotifier(GetParam());
};

class BindingOfEveryClass : public Binding {};

INSTANTIATE_TEST_SUITE_P(Classes, Binding, ValuesIn(ClassesThatBindEverywhere()), NameOfClass);
INSTANTIATE_TEST_SUITE_P(Classes, BindingOfEveryClass, ValuesIn(kExpectedClasses), NameOfClass);

TEST_P(BindingOfEveryClass, FailsWithoutAHost) {
  EXPECT_EQ(notifier_->Initialize(nullptr), static_cast<HRESULT>(0x80004005));
}

TEST_P(BindingOfEveryClass, FailsWithAHostThatLacksTheInterface) {
  host_.query_result = E_NOINTERFACE;

  EXPECT_EQ(notifier_->Initialize(&host_), E_FAIL);
  EXPECT_EQ(host_.references(), 1);
  EXPECT_THAT(host_.log_calls, IsEmpty());
}

TEST_P(BindingOfEveryClass, FailsWithEFailWhateverTheHostsRefusalSays) {
  host_.query_result = E_ACCESSDENIED;

  EXPECT_EQ(notifier_->Initialize(&host_), E_FAIL);
}

TEST_P(BindingOfEveryClass, FailsWithAHostThatHandsOutNullForTheInterface) {
  host_.query_yields_null = true;

  EXPECT_EQ(notifier_->Initialize(&host_), E_FAIL);
  EXPECT_EQ(host_.references(), 1);
}

TEST_P(BindingOfEveryClass, IsUndoneByShutdownAlsoWhereThereIsNone) {
  EXPECT_EQ(notifier_->Shutdown(), S_OK);
  EXPECT_EQ(notifier_->Shutdown(), S_OK);
}

TEST_P(BindingOfEveryClass, IsUndoneByShutdownAlsoWhereItHasFailed) {
  EXPECT_EQ(notifier_->Initialize(nullptr), E_FAIL);
  EXPECT_EQ(notifier_->Shutdown(), S_OK);
}

TEST_P(Binding, AsksTheHostForINotifierHostAndHoldsOneReference) {
  EXPECT_EQ(notifier_->Initialize(&host_), S_OK);

  EXPECT_THAT(host_.queries, ElementsAre(ToGuid(kNotifierHostIid)));
  EXPECT_EQ(host_.references(), 2);
  EXPECT_THAT(host_.log_calls, IsEmpty());
}

TEST_P(Binding, AcceptsEverySuccessOfTheHostsQuery) {
  host_.query_result = S_FALSE;

  EXPECT_EQ(notifier_->Initialize(&host_), S_OK);
  EXPECT_EQ(host_.references(), 2);
}

TEST_P(Binding, HoldsTheInterfaceAndNotTheObjectThatWasPassed) {
  HostBehindAnotherObject passed(host_);

  EXPECT_EQ(notifier_->Initialize(&passed), S_OK);
  EXPECT_EQ(passed.references(), 1);
  EXPECT_EQ(host_.references(), 2);
  EXPECT_EQ(notifier_->Shutdown(), S_OK);
  EXPECT_EQ(passed.references(), 1);
  EXPECT_EQ(host_.references(), 1);
}

TEST_P(Binding, SucceedsAfterAFailedAttempt) {
  host_.query_result = E_NOINTERFACE;
  ASSERT_EQ(notifier_->Initialize(&host_), E_FAIL);
  ASSERT_EQ(notifier_->Initialize(nullptr), E_FAIL);
  host_.query_result = S_OK;

  EXPECT_EQ(notifier_->Initialize(&host_), S_OK);
  EXPECT_EQ(host_.references(), 2);
}

TEST_P(Binding, KeepsTheFirstHostWhenAnotherComes) {
  ASSERT_EQ(notifier_->Initialize(&host_), S_OK);

  EXPECT_EQ(notifier_->Initialize(&second_), S_OK);
  EXPECT_THAT(second_.queries, IsEmpty());
  EXPECT_EQ(second_.references(), 1);
  EXPECT_EQ(host_.references(), 2);
}

TEST_P(Binding, SucceedsForAnyArgumentOnceItStands) {
  second_.query_result = E_NOINTERFACE;
  ASSERT_EQ(notifier_->Initialize(&host_), S_OK);

  EXPECT_EQ(notifier_->Initialize(&host_), S_OK);
  EXPECT_EQ(notifier_->Initialize(nullptr), S_OK);
  EXPECT_EQ(notifier_->Initialize(&second_), S_OK);
  EXPECT_EQ(host_.references(), 2);
}

TEST_P(Binding, IsUndoneByShutdown) {
  ASSERT_EQ(notifier_->Initialize(&host_), S_OK);

  EXPECT_EQ(notifier_->Shutdown(), S_OK);
  EXPECT_EQ(host_.references(), 1);
  EXPECT_EQ(notifier_->Shutdown(), S_OK);
  EXPECT_EQ(host_.references(), 1);
}

TEST_P(Binding, StandsWithAnotherHostAfterShutdown) {
  ASSERT_EQ(notifier_->Initialize(&host_), S_OK);
  ASSERT_EQ(notifier_->Shutdown(), S_OK);

  EXPECT_EQ(notifier_->Initialize(&second_), S_OK);
  EXPECT_EQ(second_.references(), 2);
  EXPECT_EQ(host_.references(), 1);
}

TEST_P(Binding, IsUndoneByTheFinalReleaseWithoutShutdown) {
  ASSERT_EQ(notifier_->Initialize(&host_), S_OK);

  notifier_ = {};
  EXPECT_EQ(host_.references(), 1);
  EXPECT_EQ(module_.CanUnloadNow(), S_OK);
}

TEST_P(Binding, OutlivesTheReleaseOfAllInterfacesButOne) {
  ComPointer<INotifierConfig> config;
  ASSERT_EQ(notifier_->Initialize(&host_), S_OK);
  ASSERT_EQ(notifier_->QueryInterface(ToGuid(kNotifierConfigIid), config.put_void()), S_OK);

  notifier_ = {};
  EXPECT_EQ(host_.references(), 2);
  config = {};
  EXPECT_EQ(host_.references(), 1);
}

class LaunchProgramBinding : public ::testing::Test {
 protected:
  // Sends an alert that can only be logged.
  void SendMissing() { EXPECT_EQ(notifier_->Send(Bstr(L"Z:\\no such file").get()), E_FAIL); }

  LoadedModule module_;
  RecordingHost first_;
  RecordingHost second_;
  ComPointer<INotifier> notifier_ = module_.CreateNotifier(kLaunchProgram);
};

TEST_F(LaunchProgramBinding, LogsToTheFirstOfTwoHosts) {
  ASSERT_EQ(notifier_->Initialize(&first_), S_OK);
  ASSERT_EQ(notifier_->Initialize(&second_), S_OK);

  SendMissing();
  EXPECT_EQ(first_.log_calls.size(), 3U);
  EXPECT_THAT(second_.log_calls, IsEmpty());
  EXPECT_EQ(first_.references(), 2);
}

TEST_F(LaunchProgramBinding, LogsToTheHostThatCameAfterShutdown) {
  ASSERT_EQ(notifier_->Initialize(&first_), S_OK);
  ASSERT_EQ(notifier_->Shutdown(), S_OK);
  ASSERT_EQ(notifier_->Initialize(&second_), S_OK);

  SendMissing();
  EXPECT_THAT(first_.log_calls, IsEmpty());
  EXPECT_EQ(second_.log_calls.size(), 3U);
}

TEST_F(LaunchProgramBinding, LogsThroughTheInterfaceThatTheHostHandedOut) {
  HostBehindAnotherObject passed(first_);
  ASSERT_EQ(notifier_->Initialize(&passed), S_OK);

  SendMissing();
  EXPECT_EQ(first_.log_calls.size(), 3U);
}

TEST_F(LaunchProgramBinding, IsOfTheOneObjectAndNotOfItsClass) {
  const auto other = module_.CreateNotifier(kLaunchProgram);
  ASSERT_EQ(notifier_->Initialize(&first_), S_OK);
  ASSERT_EQ(other->Initialize(&second_), S_OK);
  ASSERT_EQ(other->Shutdown(), S_OK);

  SendMissing();
  EXPECT_EQ(first_.log_calls.size(), 3U);
  EXPECT_THAT(second_.log_calls, IsEmpty());
}

}  // namespace
}  // namespace brantel
