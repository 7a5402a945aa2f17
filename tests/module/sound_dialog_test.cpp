#include <windows.h>
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <array>
#include <filesystem>
#include <optional>
#include <stdexcept>
#include <string>

#include "tests/module/configured_recorder.h"
#include "tests/module/dialog_fixture.h"
#include "tests/module/own_bits.h"
#include "tests/module/started_program.h"

namespace brantel {
namespace {

using ::testing::ElementsAre;
using ::testing::Pair;

constexpr int kBrowse = 210;
constexpr int kRecord = 211;
constexpr int kFilename = 212;
constexpr int kContinuous = 213;

class SoundDialogTest : public DialogFixture {
 protected:
  SoundDialogTest() : DialogFixture(ExpectedSoundDialog()) {}

  // The sample instance with another number for the continuous play.
  [[nodiscard]] std::string FileWith(const std::string& number) const {
    return expected_.sample_file.substr(0, expected_.sample_file.size() - 4) + number;
  }

  void Store(const wchar_t* name, const std::string& file) {
    ASSERT_TRUE(std::filesystem::exists(scratch_.Write(name, file)));
  }
};

const std::string kOnce("\0\0\0\0", 4);
const std::string kOn("\1\0\0\0", 4);

TEST_F(SoundDialogTest, SavesTheContinuousPlayAsABareNumber) {
  Add();
  EnterSamples();
  session_->Click(kContinuous);
  session_->Click(kOk);
  ExpectEnd(S_OK, L"night");
  EXPECT_THAT(scratch_.Files(), ElementsAre(Pair(L"night", FileWith(kOn))));
}

TEST_F(SoundDialogTest, ChecksTheBoxForEveryNumberButZeroAndSavesOne) {
  Store(L"night", FileWith(std::string("\0\0\0\x80", 4)));
  Edit(L"night");
  EXPECT_TRUE(session_->IsChecked(kContinuous));
  session_->Click(kOk);
  ExpectEnd(S_OK, L"night");
  EXPECT_THAT(scratch_.Files(), ElementsAre(Pair(L"night", FileWith(kOn))));
}

TEST_F(SoundDialogTest, ClearsTheBoxForZeroAndForAFileThatEndsBefore) {
  for (const std::string& number : {kOnce, std::string()}) {
    Store(L"night", FileWith(number));
    Edit(L"night");
    EXPECT_FALSE(session_->IsChecked(kContinuous));
    session_->Click(kOk);
    ExpectEnd(S_OK, L"night");
    EXPECT_THAT(scratch_.Files(), ElementsAre(Pair(L"night", FileWith(kOnce))));
  }
}

TEST_F(SoundDialogTest, PrefillsTheBoxFromTheDefault) {
  Store(L"Default", FileWith(kOn));
  Add();
  EXPECT_TRUE(session_->IsChecked(kContinuous));
}

TEST_F(SoundDialogTest, ChangesTheBoxByItsAccessKey) {
  Add();
  session_->PressAltAnd('c');
  EXPECT_TRUE(session_->IsChecked(kContinuous));
}

// The open-file dialog.

TEST_F(SoundDialogTest, OffersWaveFilesAndAllFilesFromTheEnteredNameOn) {
  Add();
  session_->SetText(kFilename, "bell.wav");
  session_->StartClick(kBrowse);
  HWND chooser = session_->AwaitPopup();
  EXPECT_EQ(GetWindow(chooser, GW_OWNER), session_->dialog());
  EXPECT_EQ(WindowText(FileEdit(chooser)), "bell.wav");
  EXPECT_THAT(FileKinds(chooser), ElementsAre("WAV Files (*.wav)", "All files (*.*)"));
}

TEST_F(SoundDialogTest, TakesTheChosenFileAndStaysInTheCurrentDirectory) {
  Store(L"bell.wav", "");
  std::array<wchar_t, MAX_PATH> before{};
  GetCurrentDirectoryW(MAX_PATH, before.data());
  Add();
  session_->StartClick(kBrowse);
  const std::string file = (scratch_.path() / "bell.wav").string();
  ChooseFile(file);
  EXPECT_EQ(session_->popup(), nullptr);
  EXPECT_EQ(session_->Text(kFilename), file);
  std::array<wchar_t, MAX_PATH> after{};
  GetCurrentDirectoryW(MAX_PATH, after.data());
  EXPECT_STREQ(after.data(), before.data());
}

TEST_F(SoundDialogTest, TakesNoFileThatDoesNotExist) {
  Add();
  session_->SetText(kFilename, "bell.wav");
  session_->StartClick(kBrowse);
  HWND chooser = session_->AwaitPopup();
  ChooseFile((scratch_.path() / "none.wav").string());
  EXPECT_EQ(GetWindow(session_->AwaitPopup(), GW_OWNER), chooser);
  session_->CloseMessageBox();
  session_->ClickInPopup(kCancel);
  EXPECT_EQ(session_->popup(), nullptr);
  EXPECT_EQ(session_->Text(kFilename), "bell.wav");
}

// The sound recorder.

class RecorderTest : public SoundDialogTest {
 protected:
  // Presses the record button and expects the recorder to run with this command line until it ends,
  // the dialog standing still meanwhile.
  void ExpectRecording(const std::string& command_line) {
    ProgramWatch watch(scratch_);
    session_->StartClick(kRecord);
    const ProgramReport& report = watch.AwaitReport();
    EXPECT_EQ(report.command_line, command_line);
    EXPECT_EQ(report.startup_size, kStartupSize);
    EXPECT_EQ(report.startup_flags, 0U);
    EXPECT_EQ(report.directory, CurrentDirectory());
    EXPECT_TRUE(session_->StandsStill());
    EXPECT_TRUE(watch.IsRunning());
    watch.LetItEnd();
    session_->Settle();
    EXPECT_FALSE(session_->StandsStill());
    EXPECT_EQ(session_->popup(), nullptr);
  }

  static std::string CurrentDirectory() {
    std::array<char, MAX_PATH> directory{};
    GetCurrentDirectoryA(MAX_PATH, directory.data());
    return directory.data();
  }
};

TEST_F(RecorderTest, IsTheConfiguredOne) {
  const auto recorder = PlaceChildProgram(scratch_, L"recorder.exe");
  const ConfiguredRecorder configured(recorder.wstring());
  Add();
  session_->SetText(kFilename, "my alarm.wav");
  ExpectRecording(recorder.string() + " my alarm.wav");
}

TEST_F(RecorderTest, LeavesNoHandleOpen) {
  const auto recorder = PlaceChildProgram(scratch_, L"recorder.exe");
  const ConfiguredRecorder configured(recorder.wstring());
  Add();
  constexpr int kRecordings = 3;
  const HandleWatch handles;
  for (int i = 0; i < kRecordings; ++i) {
    ExpectRecording(recorder.string() + " ");
  }
  // The system may open something once and keep it; a leak would be of every recording.
  EXPECT_THAT(handles.NewHandles(), ::testing::SizeIs(::testing::Lt(std::size_t{kRecordings})));
}

TEST_F(RecorderTest, ComesBackToADialogThatSavesAsBefore) {
  const auto recorder = PlaceChildProgram(scratch_, L"recorder.exe");
  const ConfiguredRecorder configured(recorder.wstring());
  Add();
  EnterSamples();
  ExpectRecording(recorder.string() + " C:\\bell.wav");
  EXPECT_EQ(session_->Text(kFilename), "C:\\bell.wav");
  session_->Click(kOk);
  ExpectEnd(S_OK, L"night");
}

TEST_F(RecorderTest, IsStartedForAnEmptyNameToo) {
  const auto recorder = PlaceChildProgram(scratch_, L"recorder.exe");
  const ConfiguredRecorder configured(recorder.wstring());
  Add();
  ExpectRecording(recorder.string() + " ");
}

TEST_F(RecorderTest, IsTheOneThatWasConfiguredWhenTheDialogOpened) {
  const auto recorder = PlaceChildProgram(scratch_, L"recorder.exe");
  std::optional<ConfiguredRecorder> configured(recorder.wstring());
  Add();
  configured.reset();
  ExpectRecording(recorder.string() + " ");
}

// The system's own recorder, which this system does not have, while it lives.
class SystemsRecorder {
 public:
  explicit SystemsRecorder(const std::filesystem::path& program) {
    std::array<wchar_t, MAX_PATH> directory{};
    GetSystemDirectoryW(directory.data(), MAX_PATH);
    path_ = std::filesystem::path(directory.data()) / L"sndrec32.exe";
    if (CopyFileW(program.c_str(), path_.c_str(), TRUE) == FALSE) {
      throw std::runtime_error("this machine has a recorder");
    }
  }
  SystemsRecorder(const SystemsRecorder&) = delete;
  SystemsRecorder& operator=(const SystemsRecorder&) = delete;
  ~SystemsRecorder() {
    std::error_code ignored;
    std::filesystem::remove(path_, ignored);
  }

  [[nodiscard]] std::string path() const { return path_.string(); }

 private:
  std::filesystem::path path_;
};

TEST_F(RecorderTest, IsTheSystemsWhereNoneIsConfigured) {
  const SystemsRecorder systems(PlaceChildProgram(scratch_, L"recorder.exe"));
  Add();
  session_->SetText(kFilename, "bell.wav");
  ExpectRecording(systems.path() + " bell.wav");
}

TEST_F(RecorderTest, IsTheSystemsWhereAnEmptyOneIsConfigured) {
  const SystemsRecorder systems(PlaceChildProgram(scratch_, L"recorder.exe"));
  const ConfiguredRecorder configured(L"");
  Add();
  ExpectRecording(systems.path() + " ");
}

TEST_F(RecorderTest, TellsWhenItCannotBeStarted) {
  Add();
  session_->SetText(kFilename, "bell.wav");
  session_->Click(kRecord);
  ExpectMessage("Error starting the sound recorder");
  EXPECT_EQ(session_->Text(kFilename), "bell.wav");
  session_->Click(kCancel);
  ExpectCancelled();
}

TEST_F(RecorderTest, TellsWhenTheConfiguredOneCannotBeStartedAlsoWhereTheSystemHasOne) {
  const SystemsRecorder systems(PlaceChildProgram(scratch_, L"recorder.exe"));
  const ConfiguredRecorder configured(L"C:\\none\\recorder.exe");
  Add();
  session_->Click(kRecord);
  ExpectMessage("Error starting the sound recorder");
}

}  // namespace
}  // namespace brantel
