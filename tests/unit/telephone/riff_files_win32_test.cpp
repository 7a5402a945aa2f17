// The system's own reader meets what the portable tests have read with a likeness of it.
#include "telephone/riff_files_win32.h"

#include <windows.h>
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <mmsystem.h>

#include <array>
#include <filesystem>
#include <fstream>
#include <new>
#include <string>

#include "telephone/voice_state.h"
#include "telephone/wave_playback.h"
#include "tests/module/import_patch.h"
#include "tests/unit/allocation_counter.h"
#include "tests/unit/notifier/fake_notifier_host.h"
#include "tests/unit/telephone/fake_voice_system.h"

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
  VoiceSystem system_{fake_.telephony, riff_files_,  fake_.wave_output, fake_.pump,
                      fake_.clock,     fake_.memory, kCodePage1252};
  std::shared_ptr<FakeNotifierHost> host_ = std::make_shared<FakeNotifierHost>();
  VoiceState state_;
};

TEST_P(SystemRiffFilesTest, FailsWithTheFilesOwnTextAndLetsGoOfIt) {
  const TemporaryFile file(GetParam().bytes);
  WavePlayback playback(system_, state_);
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
  WavePlayback playback(system_, state_);
  EXPECT_EQ(playback.Play(0, file.path()), 0U);
  EXPECT_TRUE(fake_.wave_output.calls.back() == "write " + samples);
  EXPECT_THAT(host_->log, IsEmpty());
}

int files_opened = 0;
int files_closed = 0;

HMMIO WINAPI OpenFile(LPSTR, LPMMIOINFO, DWORD) {
  ++files_opened;
  return reinterpret_cast<HMMIO>(0x1234);
}

MMRESULT WINAPI CloseFile(HMMIO, UINT) {
  ++files_closed;
  return MMSYSERR_NOERROR;
}

TEST(SystemRiffFiles, LeaveNoFileOpenWhenMemoryRunsOut) {
  const ImportPatch open(GetModuleHandleW(nullptr), "mmioOpenA",
                         reinterpret_cast<void*>(&OpenFile));
  const ImportPatch close(GetModuleHandleW(nullptr), "mmioClose",
                          reinterpret_cast<void*>(&CloseFile));
  const std::string path = "a.wav";  // short: strings of that length take no memory
  FailNextAllocation();
  EXPECT_THROW(SystemRiffFiles().Open(path), std::bad_alloc);
  EXPECT_EQ(files_opened, files_closed);
  EXPECT_NE(SystemRiffFiles().Open(path), nullptr);
  EXPECT_GT(files_opened, 0);
  EXPECT_EQ(files_opened, files_closed);
}

TEST_F(SoundWaveTest, IsNotOpenedWhereThereIsNone) {
  WavePlayback playback(system_, state_);
  for (const char* path : {"", "none.wav", "Z:\\none\\none.wav", "Z:\\"}) {
    host_->log.clear();
    EXPECT_EQ(playback.Play(0, path), 0x80000000U);
    EXPECT_THAT(host_->log, ElementsAre("Failed open file\r\n")) << path;
  }
}

}  // namespace
}  // namespace brantel
