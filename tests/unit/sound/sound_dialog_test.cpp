#include "sound/sound_dialog.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "instance/instance_codec.h"
#include "sound/sound_description.h"
#include "tests/unit/dialog/fake_recorder_system.h"
#include "tests/unit/dialog/instance_dialog_fixture.h"

namespace brantel {
namespace {

using ::testing::ElementsAre;
using ::testing::IsEmpty;

constexpr int kName = 203;
constexpr int kBrowse = 210;
constexpr int kRecord = 211;
constexpr int kFilename = 212;
constexpr int kContinuous = 213;

std::string FileOf(const std::string& wave, std::int32_t continuous) {
  Instance instance(2);
  instance.set_text(sound_field::kWaveFilename, wave);
  instance.set_integer(sound_field::kContinuousPlay, continuous);
  return EncodeInstance(kSound.instances, instance);
}

class SoundDialogTest : public ClassDialogFixture {
 protected:
  std::unique_ptr<InstanceDialog> Make(InstanceDialogCall call) override {
    return std::make_unique<SoundDialog>(view_, files_, std::move(call), system_);
  }

  FakeRecorderSystem system_;
};

TEST_F(SoundDialogTest, IsDialog206WithItsPicturesAndHelp) {
  ExpectDialog(206, 2, STANDARD_HELP, "help 131195");
}

TEST_F(SoundDialogTest, AddsFromTheDefaultInstance) {
  files_.files["dir\\Default"] = FileOf("C:\\bell.wav", 1);
  Add().Open();
  EXPECT_EQ(view_.title, "Add Sound Instance");
  EXPECT_EQ(view_.texts[kName], "");
  EXPECT_EQ(view_.texts[kFilename], "C:\\bell.wav");
  EXPECT_TRUE(view_.checks[kContinuous]);
  EXPECT_THAT(host_.log, IsEmpty());
}

TEST_F(SoundDialogTest, OnlyLogsAMissingDefaultInstance) {
  ExpectMissingDefaultOnlyLogged("Add Sound Instance", "Default");
}

TEST_F(SoundDialogTest, EditsTheNamedInstance) {
  files_.files["dir\\night"] = FileOf("C:\\bell.wav", 0);
  view_.checks[kContinuous] = true;
  Edit("night").Open();
  EXPECT_EQ(view_.title, "Edit Sound Instance");
  EXPECT_EQ(view_.texts[kName], "night");
  EXPECT_EQ(view_.texts[kFilename], "C:\\bell.wav");
  EXPECT_FALSE(view_.checks[kContinuous]);
}

TEST_F(SoundDialogTest, LogsAndShowsAnInstanceThatCannotBeEdited) {
  ExpectLoadFailureTold("Edit Sound Instance");
  EXPECT_THAT(view_.texts, IsEmpty());
}

TEST_F(SoundDialogTest, PutsTheFocusOnTheNameThatIsMissing) {
  InstanceDialog& dialog = Add();
  dialog.Press(STANDARD_OK);
  EXPECT_THAT(view_.events, ElementsAre(kNameMissing, "focus 203"));
}

TEST_F(SoundDialogTest, WantsAFilename) {
  InstanceDialog& dialog = Add();
  view_.texts[kName] = "night";
  dialog.Press(STANDARD_OK);
  EXPECT_THAT(
      view_.events,
      ElementsAre("message Invalid value - The 'Filename' field must have a value.", "focus 212"));
}

TEST_F(SoundDialogTest, SavesWhatWasEntered) {
  InstanceDialog& dialog = Add();
  view_.texts = {{kName, "night"}, {kFilename, "C:\\bell.wav"}};
  for (const bool checked : {false, true}) {
    view_.checks[kContinuous] = checked;
    files_.files.clear();
    dialog.Press(STANDARD_OK);
    EXPECT_EQ(files_.files["dir\\night"], FileOf("C:\\bell.wav", checked ? 1 : 0));
  }
  EXPECT_EQ(dialog.saved_name(), "night");
}

TEST_F(SoundDialogTest, BrowsesForAWaveFile) {
  InstanceDialog& dialog = Add();
  view_.texts[kFilename] = "old.wav";
  dialog.Press(kBrowse);
  EXPECT_EQ(view_.texts[kFilename], "old.wav");
  view_.chosen_file = "C:\\new.wav";
  dialog.Press(kBrowse);
  EXPECT_EQ(view_.texts[kFilename], "C:\\new.wav");
  EXPECT_THAT(view_.events, ElementsAre("choose file 353 *.wav from old.wav",
                                        "choose file 353 *.wav from old.wav"));
}

TEST_F(SoundDialogTest, OffersToBrowseFromNoMoreThan511Bytes) {
  InstanceDialog& dialog = Add();
  view_.texts[kFilename] = std::string(600, 'x');
  dialog.Press(kBrowse);
  EXPECT_THAT(view_.events, ElementsAre("choose file 353 *.wav from " + std::string(511, 'x')));
}

TEST_F(SoundDialogTest, RecordsIntoTheNamedFile) {
  system_.configured = "recorder.exe";
  InstanceDialog& dialog = Add();
  view_.texts[kFilename] = "C:\\new.wav";
  dialog.Press(kRecord);
  EXPECT_THAT(system_.command_lines, ElementsAre("recorder.exe C:\\new.wav"));
  EXPECT_THAT(view_.events, IsEmpty());
}

TEST_F(SoundDialogTest, RecordsIntoAFileOf512Bytes) {
  InstanceDialog& dialog = Add();
  view_.texts[kFilename] = std::string(513, 'x');
  dialog.Press(kRecord);
  EXPECT_THAT(system_.command_lines,
              ElementsAre(R"(C:\WINDOWS\system32\sndrec32.exe )" + std::string(512, 'x')));
}

TEST_F(SoundDialogTest, IsModifiedByItsControlsAlone) {
  for (const int control : {kName, kFilename}) {
    InstanceDialog& dialog = Add();
    dialog.Change(control);
    EXPECT_TRUE(dialog.modified()) << control;
  }
  InstanceDialog& checked = Add();
  checked.Press(kContinuous);
  EXPECT_TRUE(checked.modified());

  InstanceDialog& untouched = Add();
  for (const int button : {kBrowse, kRecord, STANDARD_HELP, STANDARD_OK})
    untouched.Press(button);
  EXPECT_FALSE(untouched.modified());
}

}  // namespace
}  // namespace brantel
