#include "telephone/wave_playback.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "tests/unit/notifier/fake_notifier_host.h"
#include "tests/unit/telephone/fake_voice_system.h"

namespace brantel {
namespace {

using ::testing::Each;
using ::testing::ElementsAre;
using ::testing::IsEmpty;

class WavePlaybackTest : public ::testing::Test {
 protected:
  WavePlaybackTest() {
    state_.host = host_;
    system_.riff_files.files["a.wav"] = WaveBytes("abcd");
  }

  // Expects that the file cannot be played, with nothing but this in the log, and that nothing of
  // it is left.
  void ExpectFailure(const std::string& text) {
    host_->log.clear();
    system_.riff_files.calls.clear();
    EXPECT_EQ(playback_.Play(3, "a.wav"), 0x80000000U);
    EXPECT_THAT(host_->log, ElementsAre(text));
    EXPECT_EQ(system_.memory.in_use(), 0U);
    EXPECT_THAT(system_.riff_files.calls, ElementsAre("open a.wav", "close a.wav"));
    EXPECT_FALSE(playback_.IsQueued());
  }

  FakeVoiceSystem system_;
  std::vector<std::string>& calls_ = system_.wave_output.calls;
  std::shared_ptr<FakeNotifierHost> host_ = std::make_shared<FakeNotifierHost>();
  VoiceState state_;
  WavePlayback playback_{system_.system, state_};
};

TEST_F(WavePlaybackTest, QueuesTheWholeFileAndReturns) {
  EXPECT_EQ(playback_.Play(3, "a.wav"), 0U);
  EXPECT_TRUE(playback_.IsQueued());
  EXPECT_THAT(calls_, ElementsAre("query 3", "open 3", "prepare", "write abcd"));
  EXPECT_THAT(system_.riff_files.calls, ElementsAre("open a.wav", "close a.wav"));
  EXPECT_THAT(host_->log, IsEmpty());
  EXPECT_EQ(system_.memory.in_use(), 2U);  // samples and header
}

TEST_F(WavePlaybackTest, UsesTheLowerHalfOfTheDeviceNumber) {
  EXPECT_EQ(playback_.Play(0xABCD0007, "a.wav"), 0U);
  EXPECT_THAT(calls_, ElementsAre("query 7", "open 7", "prepare", "write abcd"));
}

TEST_F(WavePlaybackTest, CompletesWhatTheDriverIsDoneWith) {
  playback_.Play(3, "a.wav");
  calls_.clear();
  playback_.CompleteWhenDone();
  EXPECT_FALSE(state_.playback_done);
  system_.wave_output.ReportDone();
  EXPECT_THAT(calls_, IsEmpty());
  playback_.CompleteWhenDone();
  EXPECT_THAT(calls_, ElementsAre("unprepare", "close"));
  EXPECT_TRUE(state_.playback_done);
  EXPECT_EQ(system_.memory.in_use(), 0U);
  playback_.CompleteWhenDone();
  playback_.CutShort();
  EXPECT_THAT(calls_, ElementsAre("unprepare", "close"));
}

TEST_F(WavePlaybackTest, ResetsTheDeviceToCutTheSoundShort) {
  playback_.Play(3, "a.wav");
  calls_.clear();
  playback_.CutShort();
  EXPECT_THAT(calls_, ElementsAre("reset", "message 957"));
  EXPECT_FALSE(state_.playback_done);
  playback_.CompleteWhenDone();
  EXPECT_TRUE(state_.playback_done);
}

TEST_F(WavePlaybackTest, OpensTheDeviceForEachSoundAnew) {
  for (int i = 0; i < 3; ++i) {
    playback_.Play(3, "a.wav");
    system_.wave_output.ReportDone();
    playback_.CompleteWhenDone();
  }
  EXPECT_EQ(std::ranges::count(calls_, "open 3"), 3);
  EXPECT_EQ(std::ranges::count(calls_, "close"), 3);
}

TEST_F(WavePlaybackTest, EndsASoundThatNobodyHasWaitedForBeforeTheNext) {
  playback_.Play(3, "a.wav");
  calls_.clear();
  playback_.Play(3, "a.wav");
  EXPECT_THAT(calls_, ElementsAre("reset", "unprepare", "close", "query 3", "open 3", "prepare",
                                  "write abcd"));
  EXPECT_EQ(system_.memory.in_use(), 2U);
}

TEST_F(WavePlaybackTest, EndsWhatStillPlaysWithTheObject) {
  {
    WavePlayback playback(system_.system, state_);
    playback.Play(3, "a.wav");
    calls_.clear();
  }
  EXPECT_THAT(calls_, ElementsAre("reset", "unprepare", "close"));
  EXPECT_EQ(system_.memory.in_use(), 0U);
  EXPECT_FALSE(state_.playback_done);
}

TEST_F(WavePlaybackTest, TellsThatTheFileCannotBeOpened) {
  EXPECT_EQ(playback_.Play(3, "none.wav"), 0x80000000U);
  EXPECT_THAT(host_->log, ElementsAre("Failed open file\r\n"));
  EXPECT_THAT(calls_, IsEmpty());
  EXPECT_THAT(system_.memory.requested, IsEmpty());
}

TEST_F(WavePlaybackTest, TellsForWhatMemoryRanOut) {
  system_.memory.refused = {1, 3, 6};
  ExpectFailure("Failed allocate\r\n");
  ExpectFailure("Failed alloc memory data\r\n");
  ExpectFailure("Failed alloc waveform header\r\n");
  EXPECT_THAT(calls_, IsEmpty());
}

TEST_F(WavePlaybackTest, TellsWhyTheDeviceRefusesTheFormatBeforeItIsOpened) {
  system_.wave_output.query = 32;
  ExpectFailure("The format is not supported.\r\n");
  EXPECT_THAT(calls_, ElementsAre("query 3", "text 32"));
}

TEST_F(WavePlaybackTest, TellsThatTheDeviceCannotBeOpened) {
  system_.wave_output.open = 4;
  ExpectFailure("Failed open wave device\r\n");
  EXPECT_THAT(calls_, ElementsAre("query 3", "open 3"));
}

TEST_F(WavePlaybackTest, ClosesTheDeviceWhenTheHeaderCannotBePrepared) {
  system_.wave_output.prepare = 7;
  ExpectFailure("Failed prepare header\r\n");
  EXPECT_THAT(calls_, ElementsAre("query 3", "open 3", "prepare", "close"));
}

TEST_F(WavePlaybackTest, ClosesTheDeviceWhenTheSoundCannotBeWritten) {
  system_.wave_output.write = 7;
  ExpectFailure("Failed wave write\r\n");
  EXPECT_THAT(calls_,
              ElementsAre("query 3", "open 3", "prepare", "write abcd", "unprepare", "close"));
}

TEST_F(WavePlaybackTest, FailsWithoutAWordWhereNoHostIsTold) {
  state_.host.store(nullptr);
  EXPECT_EQ(playback_.Play(3, "none.wav"), 0x80000000U);
  EXPECT_THAT(host_->log, IsEmpty());
}

// A driver that believes the format reads no further than the block that it is given.
TEST_F(WavePlaybackTest, LeavesZerosBehindAFormatThatPromisesMore) {
  for (const std::string& format :
       {std::string(), std::string("\2"), kWaveFormat, kWaveFormat + "\xFF\xFF",
        kWaveFormat + "\xFF\xFFxyz", kWaveFormat + "\xFF\xFF" + std::string(70000, 'x')}) {
    system_.riff_files.files["a.wav"] = WaveBytes("abcd", format);
    EXPECT_EQ(playback_.Play(3, "a.wav"), 0U);
    const auto& given = system_.wave_output.format;
    ASSERT_GE(given.size(), format.size() + 18 + 0xFFFF);
    EXPECT_EQ(std::memcmp(given.data(), format.data(), format.size()), 0);
    EXPECT_THAT(
        std::vector(given.begin() + static_cast<std::ptrdiff_t>(format.size()), given.end()),
        Each(std::byte{0}));
  }
}

TEST_F(WavePlaybackTest, FindsChunksBehindOthersAndTheirPadding) {
  const std::string chunks = RiffChunk("JUNK", "abc") + RiffChunk("fmt ", kWaveFormat + "x") +
                             RiffChunk("fact", "1234") + RiffChunk("data", "xyz");
  system_.riff_files.files["a.wav"] = RiffForm(chunks);
  EXPECT_EQ(playback_.Play(3, "a.wav"), 0U);
  EXPECT_EQ(calls_.back(), "write xyz");
}

class MalformedWaveTest : public WavePlaybackTest,
                          public ::testing::WithParamInterface<MalformedWave> {};

TEST_P(MalformedWaveTest, FailsWithItsOwnText) {
  system_.wave_output.wants_rate = true;
  system_.riff_files.files["a.wav"] = GetParam().bytes;
  ExpectFailure(GetParam().text);
}

INSTANTIATE_TEST_SUITE_P(Files, MalformedWaveTest, ::testing::ValuesIn(MalformedWaves()),
                         [](const auto& wave) { return wave.param.name; });

}  // namespace
}  // namespace brantel
