#include <windows.h>
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <array>
#include <filesystem>
#include <string>

#include "tests/module/configured_recorder.h"
#include "tests/module/dialog_fixture.h"
#include "tests/module/dialog_looks.h"
#include "tests/module/own_bits.h"
#include "tests/module/started_program.h"

namespace brantel {
namespace {

using ::testing::ElementsAre;
using ::testing::Pair;

constexpr int kCallName = 223;
constexpr int kCount = 229;
constexpr int kButton = 230;
constexpr int kItemDown = 231;

struct WaveRow {
  int edit;
  int browse;
  int record;
};
constexpr std::array<WaveRow, 5> kWaveRows = {
    {{220, 221, 235}, {231, 222, 236}, {232, 225, 237}, {233, 224, 238}, {234, 226, 239}}};

class VoiceDialogTest : public DialogFixture {
 protected:
  VoiceDialogTest() : DialogFixture(ExpectedVoiceDialog()) {}

  // The sample instance with these numbers for count and button.
  [[nodiscard]] std::string FileWith(const std::string& numbers) const {
    constexpr std::size_t kNumbers = 16 + 4 + 8 + 4 + 11;
    std::string file = expected_.sample_file;
    return file.replace(kNumbers, numbers.size(), numbers);
  }
};

TEST_F(VoiceDialogTest, SavesCountAndButtonAsBareNumbersWithTheirSign) {
  Add();
  EnterSamples();
  session_->SetText(kCount, "-2");
  session_->SetText(kButton, "99");
  session_->Click(kOk);
  ExpectEnd(S_OK, L"night");
  EXPECT_THAT(scratch_.Files(),
              ElementsAre(Pair(L"night", FileWith(std::string("\xFE\xFF\xFF\xFF\x63\0\0\0", 8)))));
}

TEST_F(VoiceDialogTest, ShowsZeroForCountAndButtonWhereThereIsNoDefault) {
  Add();
  EXPECT_EQ(session_->Text(kCount), "0");
  EXPECT_EQ(session_->Text(kButton), "0");
}

TEST_F(VoiceDialogTest, ShowsAnyCountAndButtonThatIsStored) {
  ASSERT_TRUE(std::filesystem::exists(
      scratch_.Write(L"night", FileWith(std::string("\xFE\xFF\xFF\xFF\xFF\xFF\xFF\x7F", 8)))));
  Edit(L"night");
  EXPECT_EQ(session_->Text(kCount), "-2");
  EXPECT_EQ(session_->Text(kButton), "2147483647");
}

TEST_F(VoiceDialogTest, SavesZeroForWhatIsNoNumber) {
  Add();
  EnterSamples();
  session_->SetText(kCount, "three");
  session_->SetText(kButton, "#");
  session_->Click(kOk);
  ExpectEnd(S_OK, L"night");
  EXPECT_THAT(scratch_.Files(), ElementsAre(Pair(L"night", expected_.sample_file)));
}

TEST_F(VoiceDialogTest, LeadsTheSharedAccessKeyToTheNameAndToTheItemInTurn) {
  Add();
  ASSERT_EQ(session_->Focus(), kCallName);
  session_->PressAltAnd('d');
  EXPECT_EQ(session_->Focus(), kItemDown);
  session_->PressAltAnd('d');
  EXPECT_EQ(session_->Focus(), kCallName);
}

TEST_F(VoiceDialogTest, LeadsAccessKeysToCountAndButton) {
  Add();
  session_->PressAltAnd('c');
  EXPECT_EQ(session_->Focus(), kCount);
  session_->PressAltAnd('b');
  EXPECT_EQ(session_->Focus(), kButton);
}

TEST_F(VoiceDialogTest, ChoosesAFileForEachRow) {
  const std::string file = scratch_.Write(L"bell.wav", "").string();
  Add();
  for (const WaveRow& row : kWaveRows) {
    session_->SetText(row.edit, "row.wav");
    session_->StartClick(row.browse);
    HWND chooser = session_->AwaitPopup();
    EXPECT_EQ(WindowText(FileEdit(chooser)), "row.wav");
    EXPECT_THAT(FileKinds(chooser), ElementsAre("WAV Files (*.wav)", "All files (*.*)"));
    ChooseFile(file);
    EXPECT_EQ(session_->Text(row.edit), file);
    session_->SetText(row.edit, "");
  }
}

TEST_F(VoiceDialogTest, RecordsTheFileOfEachRow) {
  const auto recorder = PlaceChildProgram(scratch_, L"recorder.exe");
  const ConfiguredRecorder configured(recorder.wstring());
  Add();
  for (const WaveRow& row : kWaveRows) {
    const std::string file = "my row " + std::to_string(row.edit) + ".wav";
    session_->SetText(row.edit, file);
    ProgramWatch watch(scratch_);
    session_->StartClick(row.record);
    const ProgramReport& report = watch.AwaitReport();
    EXPECT_EQ(report.command_line, recorder.string() + " " + file);
    EXPECT_EQ(report.startup_size, kStartupSize);
    EXPECT_EQ(report.startup_flags, 0U);
    EXPECT_TRUE(session_->StandsStill());
    watch.LetItEnd();
    session_->Settle();
    EXPECT_EQ(session_->popup(), nullptr);
  }
}

TEST_F(VoiceDialogTest, TellsWhenTheRecorderCannotBeStarted) {
  Add();
  session_->Click(kWaveRows.back().record);
  ExpectMessage("Error starting the sound recorder");
}

// Each row's buttons stand on its line, and rows on one another.
TEST_F(VoiceDialogTest, AlignsItsRows) {
  Add();
  const RECT first = AreaOf(session_->Control(kWaveRows.front().edit), session_->dialog());
  const RECT browse = AreaOf(session_->Control(kWaveRows.front().browse), session_->dialog());
  const RECT record = AreaOf(session_->Control(kWaveRows.front().record), session_->dialog());
  for (const WaveRow& row : kWaveRows) {
    const RECT edit = AreaOf(session_->Control(row.edit), session_->dialog());
    EXPECT_EQ(edit.left, first.left);
    EXPECT_EQ(edit.right, first.right);
    for (const auto& [button, column] :
         {std::pair(row.browse, browse), std::pair(row.record, record)}) {
      const RECT area = AreaOf(session_->Control(button), session_->dialog());
      EXPECT_EQ(area.top, edit.top);
      EXPECT_EQ(area.bottom, edit.bottom);
      EXPECT_EQ(area.left, column.left);
      EXPECT_EQ(area.right, column.right);
    }
  }
}

}  // namespace
}  // namespace brantel
