#include "sound/sound.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "instance/instance_codec.h"
#include "sound/sound_description.h"
#include "tests/unit/instance/fake_instance_files.h"
#include "tests/unit/notifier/fake_notifier_host.h"

namespace brantel {
namespace {

using ::testing::ElementsAre;
using ::testing::IsEmpty;

class FakeSoundPlayer final : public SoundPlayer {
 public:
  bool succeeds = true;
  std::vector<std::string> calls;

  bool PlayOnce(const std::string& file) override { return Record("once " + file); }
  bool PlayLoop(const std::string& file) override { return Record("loop " + file); }
  bool Stop() override { return Record("stop"); }

 private:
  bool Record(const std::string& call) {
    calls.push_back(call);
    return succeeds;
  }
};

class SoundTest : public ::testing::Test {
 protected:
  void Store(const std::string& file, std::int32_t continuous) {
    Instance instance(2);
    instance.set_text(sound_field::kWaveFilename, file);
    instance.set_integer(sound_field::kContinuousPlay, continuous);
    files_.files["alert"] = EncodeInstance(kSound.instances, instance);
  }

  Result Send() { return notifier_.Send({u"alert", "alert"}, &host_); }

  FakeInstanceFiles files_;
  FakeSoundPlayer player_;
  FakeNotifierHost host_;
  Sound notifier_{files_, player_};
};

TEST_F(SoundTest, PlaysTheFileOnce) {
  Store("C:\\alarm.wav", 0);
  EXPECT_EQ(Send(), kOk);
  EXPECT_THAT(player_.calls, ElementsAre("once C:\\alarm.wav"));
  EXPECT_THAT(host_.calls, IsEmpty());
}

TEST_F(SoundTest, LoopsTheFileAndAnswers2) {
  Store("C:\\alarm.wav", 1);
  EXPECT_EQ(Send(), 2);
  EXPECT_THAT(player_.calls, ElementsAre("loop C:\\alarm.wav"));
  EXPECT_THAT(host_.calls, IsEmpty());
}

TEST_F(SoundTest, TakesEveryNumberButZeroForALoop) {
  Store("a.wav", -7);
  EXPECT_EQ(Send(), 2);
  EXPECT_THAT(player_.calls, ElementsAre("loop a.wav"));
}

TEST_F(SoundTest, FailsSilentlyWhenTheFileCannotBePlayed) {
  player_.succeeds = false;
  for (const std::int32_t continuous : {0, 1}) {
    Store("a.wav", continuous);
    EXPECT_EQ(Send(), kFail);
  }
  EXPECT_THAT(player_.calls, ElementsAre("once a.wav", "loop a.wav"));
  EXPECT_THAT(host_.calls, IsEmpty());
}

TEST_F(SoundTest, StopsTheSoundForAnEmptyArgumentAlsoWithoutAHost) {
  EXPECT_EQ(notifier_.Send({u"", ""}, nullptr), kOk);
  EXPECT_EQ(notifier_.Send({u"", ""}, &host_), kOk);
  EXPECT_THAT(player_.calls, ElementsAre("stop", "stop"));
  EXPECT_THAT(files_.calls, IsEmpty());
  EXPECT_THAT(host_.calls, IsEmpty());
}

TEST_F(SoundTest, FailsWhenTheSoundCannotBeStopped) {
  player_.succeeds = false;
  EXPECT_EQ(notifier_.Send({u"", ""}, &host_), kFail);
}

TEST_F(SoundTest, PlaysWithoutAHost) {
  Store("a.wav", 0);
  EXPECT_EQ(notifier_.Send({u"alert", "alert"}, nullptr), kOk);
  EXPECT_THAT(player_.calls, ElementsAre("once a.wav"));
}

TEST_F(SoundTest, LogsAnInstanceThatCannotBeLoaded) {
  EXPECT_EQ(Send(), kFail);
  EXPECT_THAT(host_.log, ElementsAre("alert", " - Failed to load notification from disk.", "\r"));
  EXPECT_EQ(notifier_.Send({u"alert", "alert"}, nullptr), kFail);
  EXPECT_THAT(player_.calls, IsEmpty());
}

TEST_F(SoundTest, PlaysAFileOnceWhoseInstanceEndsBeforeTheNumber) {
  Store("a.wav", 1);
  files_.files["alert"].resize(files_.files["alert"].size() - 4);
  EXPECT_EQ(Send(), kOk);
  EXPECT_THAT(player_.calls, ElementsAre("once a.wav"));
}

}  // namespace
}  // namespace brantel
