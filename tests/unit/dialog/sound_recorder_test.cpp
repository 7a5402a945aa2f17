#include "dialog/sound_recorder.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "tests/unit/dialog/fake_dialog_view.h"
#include "tests/unit/dialog/fake_recorder_system.h"

namespace brantel {
namespace {

using ::testing::ElementsAre;
using ::testing::IsEmpty;

constexpr int kEdit = 7;

class SoundRecorderTest : public ::testing::Test {
 protected:
  void Record() { SoundRecorder(system_).Record(view_, kEdit, 511); }

  FakeRecorderSystem system_;
  FakeDialogView view_;
};

TEST_F(SoundRecorderTest, IsTheSystemsWhereNoneIsConfigured) {
  view_.texts[kEdit] = "C:\\alarm.wav";
  Record();
  EXPECT_THAT(system_.command_lines,
              ElementsAre(R"(C:\WINDOWS\system32\sndrec32.exe C:\alarm.wav)"));
  EXPECT_THAT(view_.events, IsEmpty());
}

TEST_F(SoundRecorderTest, IsTheConfiguredOneBeforeTheSystems) {
  system_.configured = "D:\\my recorder.exe";
  view_.texts[kEdit] = "my alarm.wav";
  Record();
  EXPECT_THAT(system_.command_lines, ElementsAre("D:\\my recorder.exe my alarm.wav"));
}

TEST_F(SoundRecorderTest, IsFoundWhenTheDialogIsMade) {
  SoundRecorder recorder(system_);
  system_.configured = "D:\\late.exe";
  recorder.Record(view_, kEdit, 511);
  EXPECT_THAT(system_.command_lines, ElementsAre(R"(C:\WINDOWS\system32\sndrec32.exe )"));
}

TEST_F(SoundRecorderTest, TakesNoMoreOfTheFileThanItIsAllowed) {
  view_.texts[kEdit] = std::string(512, 'x');
  Record();
  EXPECT_THAT(system_.command_lines,
              ElementsAre(R"(C:\WINDOWS\system32\sndrec32.exe )" + std::string(511, 'x')));
}

TEST_F(SoundRecorderTest, TellsWhenItCannotBeStarted) {
  system_.succeeds = false;
  Record();
  EXPECT_THAT(view_.events, ElementsAre("message Error starting the sound recorder"));
}

}  // namespace
}  // namespace brantel
