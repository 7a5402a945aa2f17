// Which references Voice holds to hosts, where there is a line to call by: beside the one of each
// object, one for the log of all calls, from the first binding to any object's shutdown.
#include <windows.h>
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <string>

#include "system/windows/bstr_win32.h"
#include "tests/module/expected_classes.h"
#include "tests/module/instance_bytes.h"
#include "tests/module/loaded_module.h"
#include "tests/module/recording_host.h"
#include "tests/module/scratch_directory.h"
#include "tests/module/stand_in_telephony.h"

namespace brantel {
namespace {

using ::testing::ElementsAre;
using ::testing::IsEmpty;
using ::testing::Not;

class VoiceBinding : public ::testing::Test {
 protected:
  LoadedModule module_;
  StandInTelephony telephony_{module_.handle()};
  RecordingHost host_;
  RecordingHost second_;
  ComPointer<INotifier> notifier_ = module_.CreateNotifier(kVoice);
  ComPointer<INotifier> other_ = module_.CreateNotifier(kVoice);
};

TEST_F(VoiceBinding, HoldsTheFirstHostOnceMoreForTheLog) {
  ASSERT_EQ(notifier_->Initialize(&host_), S_OK);
  EXPECT_EQ(host_.references(), 3);
  EXPECT_THAT(host_.queries, ElementsAre(ToGuid(kNotifierHostIid)));
  ASSERT_EQ(notifier_->Initialize(&second_), S_OK);
  EXPECT_EQ(host_.references(), 3);

  EXPECT_EQ(notifier_->Shutdown(), S_OK);
  EXPECT_EQ(host_.references(), 1);
  EXPECT_EQ(notifier_->Shutdown(), S_OK);
  EXPECT_EQ(host_.references(), 1);
}

TEST_F(VoiceBinding, HoldsTheHostOfASecondObjectOnce) {
  ASSERT_EQ(notifier_->Initialize(&host_), S_OK);
  ASSERT_EQ(other_->Initialize(&second_), S_OK);
  EXPECT_EQ(host_.references(), 3);
  EXPECT_EQ(second_.references(), 2);

  EXPECT_EQ(notifier_->Shutdown(), S_OK);
  EXPECT_EQ(host_.references(), 1);
  EXPECT_EQ(second_.references(), 2);
}

TEST_F(VoiceBinding, HoldsNoHostForTheLogAfterTheShutdownOfAnyObject) {
  ASSERT_EQ(notifier_->Initialize(&host_), S_OK);
  ASSERT_EQ(other_->Initialize(&second_), S_OK);

  EXPECT_EQ(other_->Shutdown(), S_OK);
  EXPECT_EQ(second_.references(), 1);
  EXPECT_EQ(host_.references(), 2);
  EXPECT_EQ(notifier_->Shutdown(), S_OK);
  EXPECT_EQ(host_.references(), 1);
}

TEST_F(VoiceBinding, HoldsAHostOnceWhenItComesAfterAShutdown) {
  ASSERT_EQ(notifier_->Initialize(&host_), S_OK);
  ASSERT_EQ(notifier_->Shutdown(), S_OK);

  ASSERT_EQ(notifier_->Initialize(&host_), S_OK);
  EXPECT_EQ(host_.references(), 2);
  EXPECT_EQ(notifier_->Shutdown(), S_OK);
  EXPECT_EQ(host_.references(), 1);
}

TEST_F(VoiceBinding, LetsGoOfBothByTheLastReleaseWithoutShutdown) {
  ASSERT_EQ(notifier_->Initialize(&host_), S_OK);
  notifier_ = {};
  EXPECT_EQ(host_.references(), 1);
  other_ = {};
  EXPECT_EQ(module_.CanUnloadNow(), S_OK);
}

TEST_F(VoiceBinding, LeavesTheLogToTheFirstHostWhenAnUnboundObjectGoes) {
  ASSERT_EQ(notifier_->Initialize(&host_), S_OK);
  other_ = {};
  EXPECT_EQ(host_.references(), 3);
}

TEST_F(VoiceBinding, TellsTheFirstHostOfTheCallsOfAllObjects) {
  const ScratchDirectory scratch;
  const std::string nothing_played("\xFF\xFF\xFF\xFF\0\0\0\0", 8);  // a count of -1, button 0
  const Bstr instance(scratch
                          .Write(L"night", MagicBytes(kVoice) + TextField("5550100") +
                                               TextField("repeat.wav") + nothing_played +
                                               TextField("") + TextField("") + TextField("") +
                                               TextField(""))
                          .wstring());
  ASSERT_EQ(notifier_->Initialize(&host_), S_OK);
  ASSERT_EQ(other_->Initialize(&second_), S_OK);

  EXPECT_EQ(other_->Send(instance.get()), E_FAIL);
  EXPECT_THAT(host_.log_calls, Not(IsEmpty()));
  EXPECT_THAT(second_.log_calls, IsEmpty());
  EXPECT_EQ(host_.references(), 3);
}

}  // namespace
}  // namespace brantel
