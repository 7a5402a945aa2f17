// The system's own reader meets what the portable tests have read with a likeness of it.
#include "voice/riff_files_win32.h"

#include <windows.h>
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <array>
#include <filesystem>
#include <fstream>
#include <string>

#include "tests/unit/framework/fake_notifier_host.h"
#include "tests/unit/voice/fake_voice_system.h"
#include "voice/voice_state.h"
#include "voice/wave_playback.h"

namespace brantel {
namespace {

using ::testing::ElementsAre;
using ::testing::IsEmpty;

// A file of its own in the folder for temporary files, while it lives.
class TemporaryFile {
 public:
  explicit TemporaryFile(const std::string& bytes) {
    std::array<char, MAX_PATH> folder{};
    GetTempPathA(MAX_PATH, folder.data());
    std::array<char, MAX_PATH> path{};
    GetTempFileNameA(folder.data(), "wav", 0, path.data());
    path_ = path.data();
    std::ofstream(path_, std::ios::binary) << bytes;
  }
  TemporaryFile(const TemporaryFile&) = delete;
  TemporaryFile& operator=(const TemporaryFile&) = delete;
  ~TemporaryFile() { DeleteFileA(path_.c_str()); }

  [[nodiscard]] const std::string& path() const { return path_; }

 private:
  std::string path_;
};

class SystemRiffFilesTest : public ::testing::TestWithParam<MalformedWave> {
 protected:
  SystemRiffFilesTest() {
    state_.host = host_;
    fake_.wave_output.wants_rate = true;
  }

  FakeVoiceSystem fake_;
  SystemRiffFiles riff_files_;
  VoiceSurroundings surroundings_{fake_.telephony, riff_files_, fake_.wave_output,
                                  fake_.pump,      fake_.clock, fake_.memory};
  std::shared_ptr<FakeNotifierHost> host_ = std::make_shared<FakeNotifierHost>();
  VoiceState state_;
};

TEST_P(SystemRiffFilesTest, FailsWithTheFilesOwnTextAndLetsGoOfIt) {
  const TemporaryFile file(GetParam().bytes);
  WavePlayback playback(surroundings_, state_);
  EXPECT_EQ(playback.Play(0, file.path()), 0x80000000U);
  EXPECT_THAT(host_->log, ElementsAre(GetParam().text));
  EXPECT_EQ(fake_.memory.in_use(), 0U);
  // A file that somebody still has open cannot be opened alone.
  const HANDLE alone = CreateFileA(file.path().c_str(), GENERIC_READ | GENERIC_WRITE, 0, nullptr,
                                   OPEN_EXISTING, 0, nullptr);
  EXPECT_NE(alone, INVALID_HANDLE_VALUE);
  CloseHandle(alone);
}

INSTANTIATE_TEST_SUITE_P(Files, SystemRiffFilesTest, ::testing::ValuesIn(MalformedWaves()),
                         [](const auto& wave) { return wave.param.name; });

class SoundWaveTest : public SystemRiffFilesTest {};

TEST_F(SoundWaveTest, IsReadWhole) {
  std::string samples;
  for (int i = 0; i < 200001; ++i)
    samples += static_cast<char>(i * 7 % 251);
  const TemporaryFile file(RiffForm(RiffChunk("JUNK", "abc") +
                                    RiffChunk("fmt ", kWaveFormat + std::string(3, '\0')) +
                                    RiffChunk("fact", "1234") + RiffChunk("data", samples)));
  WavePlayback playback(surroundings_, state_);
  EXPECT_EQ(playback.Play(0, file.path()), 0U);
  EXPECT_TRUE(fake_.wave_output.calls.back() == "write " + samples);
  EXPECT_THAT(host_->log, IsEmpty());
}

TEST_F(SoundWaveTest, IsNotOpenedWhereThereIsNone) {
  WavePlayback playback(surroundings_, state_);
  for (const char* path : {"", "none.wav", "Z:\\none\\none.wav", "Z:\\"}) {
    host_->log.clear();
    EXPECT_EQ(playback.Play(0, path), 0x80000000U);
    EXPECT_THAT(host_->log, ElementsAre("Failed open file\r\n")) << path;
  }
}

}  // namespace
}  // namespace brantel
