#include "voice/voice_dialog.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <array>

#include "instance/instance_codec.h"
#include "tests/unit/dialog/fake_recorder_system.h"
#include "tests/unit/dialog/instance_dialog_fixture.h"
#include "voice/voice_description.h"

namespace brantel {
namespace {

using ::testing::ElementsAre;
using ::testing::IsEmpty;
using ::testing::Pair;
using ::testing::UnorderedElementsAre;

constexpr int kName = 223;
constexpr int kPhone = 219;
constexpr int kRepeat = 220;
constexpr int kCount = 229;
constexpr int kButton = 230;

struct WaveRow {
  int edit;
  int browse;
  int record;
};
constexpr std::array<WaveRow, 5> kWaveRows = {
    {{220, 221, 235}, {231, 222, 236}, {232, 225, 237}, {233, 224, 238}, {234, 226, 239}}};

Instance Sample() {
  Instance instance(8);
  instance.set_text(voice_field::kPhoneNumber, "5550100");
  instance.set_text(voice_field::kRepeatMessage, "repeat.wav");
  instance.set_integer(voice_field::kCount, -3);
  instance.set_integer(voice_field::kButton, 99);
  instance.set_text(voice_field::kItemDown, "item_down.wav");
  instance.set_text(voice_field::kItemUp, "item_up.wav");
  instance.set_text(voice_field::kServiceDown, "service_down.wav");
  instance.set_text(voice_field::kServiceUp, "service_up.wav");
  return instance;
}

const std::map<int, std::string> kSampleTexts = {
    {219, "5550100"},
    {220, "repeat.wav"},
    {229, "-3"},
    {230, "99"},
    {231, "item_down.wav"},
    {232, "item_up.wav"},
    {233, "service_down.wav"},
    {234, "service_up.wav"},
};

class VoiceDialogTest : public ClassDialogFixture {
 protected:
  std::unique_ptr<InstanceDialog> Make(InstanceDialogCall call) override {
    return std::make_unique<VoiceDialog>(view_, files_, std::move(call), system_);
  }

  FakeRecorderSystem system_;
};

TEST_F(VoiceDialogTest, IsDialog140WithItsPicturesAndHelp) {
  ExpectDialog(140, 10, STANDARD_HELP, "help 131476");
  std::vector<std::pair<int, int>> pictures;
  for (const BitmapButton& button : dialog_->bitmap_buttons()) {
    pictures.emplace_back(button.control, button.bitmap_id);
  }
  EXPECT_THAT(pictures,
              UnorderedElementsAre(Pair(221, 301), Pair(222, 301), Pair(225, 301), Pair(224, 301),
                                   Pair(226, 301), Pair(235, 302), Pair(236, 302), Pair(237, 302),
                                   Pair(238, 302), Pair(239, 302)));
}

TEST_F(VoiceDialogTest, AddsFromTheDefaultInstance) {
  files_.files["dir\\Default"] = EncodeInstance(kVoice.instances, Sample());
  Add().Open();
  EXPECT_EQ(view_.title, "Add Voice Instance");
  EXPECT_EQ(view_.texts, kSampleTexts);
  EXPECT_THAT(host_.log, IsEmpty());
}

TEST_F(VoiceDialogTest, OnlyLogsAMissingDefaultInstance) {
  ExpectMissingDefaultOnlyLogged("Add Voice Instance", "Default Voice");
}

TEST_F(VoiceDialogTest, ShowsZeroForTheNumbersOfANewInstanceWithoutADefault) {
  InstanceDialog& dialog = Add();
  dialog.Open();
  EXPECT_TRUE(view_.texts.contains(kCount));
  EXPECT_TRUE(view_.texts.contains(kButton));
  for (const auto& [control, text] : view_.texts) {
    EXPECT_EQ(text, control == kCount || control == kButton ? "0" : "") << control;
  }
  EXPECT_FALSE(dialog.modified());
}

TEST_F(VoiceDialogTest, EditsTheNamedInstance) {
  files_.files["dir\\night"] = EncodeInstance(kVoice.instances, Sample());
  Edit("night").Open();
  EXPECT_EQ(view_.title, "Edit Voice Instance");
  auto expected = kSampleTexts;
  expected[kName] = "night";
  EXPECT_EQ(view_.texts, expected);
}

TEST_F(VoiceDialogTest, LogsAndShowsAnInstanceThatCannotBeEdited) {
  ExpectLoadFailureTold("Edit Voice Instance");
  EXPECT_THAT(view_.texts, IsEmpty());
}

TEST_F(VoiceDialogTest, ChecksTheNameAndThenThePhoneNumber) {
  InstanceDialog& dialog = Add();
  dialog.Press(STANDARD_OK);
  view_.texts[kName] = "night";
  files_.files["dir\\night"] = "";
  dialog.Press(STANDARD_OK);
  files_.files.clear();
  dialog.Press(STANDARD_OK);
  EXPECT_THAT(
      view_.events,
      ElementsAre(kNameMissing, "focus 223", kNameTaken, "focus 223",
                  "message Invalid value - The 'Phone' field must have a value.", "focus 219"));
  EXPECT_THAT(files_.files, IsEmpty());
}

TEST_F(VoiceDialogTest, SavesWhatWasEntered) {
  InstanceDialog& dialog = Add();
  view_.texts = kSampleTexts;
  view_.texts[kName] = "night";
  dialog.Press(STANDARD_OK);
  EXPECT_THAT(files_.files,
              ElementsAre(Pair("dir\\night", EncodeInstance(kVoice.instances, Sample()))));
  EXPECT_THAT(view_.events, ElementsAre("close"));
  EXPECT_EQ(dialog.saved_name(), "night");
}

TEST_F(VoiceDialogTest, NeedsAPhoneNumberAlone) {
  InstanceDialog& dialog = Add();
  view_.texts = {{kName, "night"}, {kPhone, "1"}};
  dialog.Press(STANDARD_OK);
  Instance expected(8);
  expected.set_text(voice_field::kPhoneNumber, "1");
  EXPECT_EQ(files_.files["dir\\night"], EncodeInstance(kVoice.instances, expected));
}

TEST_F(VoiceDialogTest, ReadsAnyNumberAndNothingElseForOne) {
  struct Number {
    const char* text;
    std::int32_t number;
  };
  constexpr Number kNumbers[] = {{"0", 0},    {"12", 12}, {"-1", -1},     {"98", 98},
                                 {"five", 0}, {"", 0},    {"7 times", 0}, {"*", 0}};
  for (const auto& [text, number] : kNumbers) {
    InstanceDialog& dialog = Add();
    files_.files.clear();
    view_.texts = {{kName, "night"}, {kPhone, "1"}, {kCount, text}, {kButton, text}};
    dialog.Press(STANDARD_OK);
    const auto saved = DecodeInstance(kVoice.instances, files_.files["dir\\night"]);
    ASSERT_TRUE(saved);
    EXPECT_EQ(saved->integer(voice_field::kCount), number) << text;
    EXPECT_EQ(saved->integer(voice_field::kButton), number) << text;
  }
}

TEST_F(VoiceDialogTest, TellsWhenTheFileCannotBeSaved) {
  InstanceDialog& dialog = Add();
  view_.texts = {{kName, "night"}, {kPhone, "1"}};
  files_.held.insert("dir\\night");
  dialog.Press(STANDARD_OK);
  EXPECT_THAT(view_.events, ElementsAre("message Error saving instance file"));
}

TEST_F(VoiceDialogTest, BrowsesForTheFileOfEachRow) {
  for (const WaveRow& row : kWaveRows) {
    InstanceDialog& dialog = Add();
    view_ = {};
    view_.texts[row.edit] = std::string(600, 'x');
    view_.chosen_file = "C:\\new.wav";
    dialog.Press(row.browse);
    EXPECT_THAT(view_.texts, ElementsAre(Pair(row.edit, "C:\\new.wav")));
    EXPECT_THAT(view_.events, ElementsAre("choose file 353 *.wav from " + std::string(511, 'x')));
  }
  view_.chosen_file.reset();
  Add().Press(221);
  EXPECT_EQ(view_.texts[kRepeat], "");
}

TEST_F(VoiceDialogTest, RecordsTheFileOfEachRow) {
  system_.configured = "recorder.exe";
  for (const WaveRow& row : kWaveRows) {
    InstanceDialog& dialog = Add();
    view_.texts = {{row.edit, "row" + std::to_string(row.edit) + ".wav"}};
    dialog.Press(row.record);
    EXPECT_EQ(system_.command_lines.back(), "recorder.exe row" + std::to_string(row.edit) + ".wav");
    EXPECT_THAT(view_.events, IsEmpty());
  }
  EXPECT_EQ(system_.command_lines.size(), 5U);
}

TEST_F(VoiceDialogTest, RecordsIntoAnEmptyRowWithAnEmptyArgument) {
  InstanceDialog& dialog = Add();
  dialog.Press(236);
  EXPECT_THAT(system_.command_lines, ElementsAre(R"(C:\WINDOWS\system32\sndrec32.exe )"));
}

TEST_F(VoiceDialogTest, RecordsIntoAFileOf511Bytes) {
  InstanceDialog& dialog = Add();
  view_.texts[kRepeat] = std::string(512, 'x');
  dialog.Press(235);
  EXPECT_THAT(system_.command_lines,
              ElementsAre(R"(C:\WINDOWS\system32\sndrec32.exe )" + std::string(511, 'x')));
}

TEST_F(VoiceDialogTest, TellsWhenTheRecorderCannotBeStarted) {
  system_.succeeds = false;
  InstanceDialog& dialog = Add();
  dialog.Press(239);
  EXPECT_THAT(view_.events, ElementsAre("message Error starting the sound recorder"));
}

TEST_F(VoiceDialogTest, IsModifiedByItsEditsAlone) {
  for (const int control : {223, 219, 220, 229, 230, 231, 232, 233, 234}) {
    InstanceDialog& dialog = Add();
    dialog.Change(control);
    EXPECT_TRUE(dialog.modified()) << control;
  }
  InstanceDialog& untouched = Add();
  for (const WaveRow& row : kWaveRows) {
    untouched.Press(row.browse);
    untouched.Press(row.record);
  }
  for (const int button : {STANDARD_HELP, STANDARD_OK})
    untouched.Press(button);
  EXPECT_FALSE(untouched.modified());
}

}  // namespace
}  // namespace brantel
