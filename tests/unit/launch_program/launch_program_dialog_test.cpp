#include "launch_program/launch_program_dialog.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "instance/instance_codec.h"
#include "launch_program/launch_program_description.h"
#include "tests/unit/dialog/instance_dialog_fixture.h"
#include "tests/unit/launch_program/fake_process_starter.h"

namespace brantel {
namespace {

using ::testing::ElementsAre;
using ::testing::IsEmpty;

constexpr int kName = 218;
constexpr int kProgram = 219;
constexpr int kArguments = 220;
constexpr int kBrowseProgram = 221;
constexpr int kWorkingPath = 222;
constexpr int kBrowseWorkingPath = 223;

std::string FileOf(const std::string& program, const std::string& directory,
                   const std::string& arguments) {
  Instance instance(3);
  instance.set_text(launch_program_field::kProgramFilename, program);
  instance.set_text(launch_program_field::kWorkingPath, directory);
  instance.set_text(launch_program_field::kProgramArguments, arguments);
  return EncodeInstance(kLaunchProgram.instances, instance);
}

class LaunchProgramDialogTest : public ClassDialogFixture {
 protected:
  std::unique_ptr<InstanceDialog> Make(InstanceDialogCall call) override {
    return std::make_unique<LaunchProgramDialog>(view_, files_, std::move(call), starter_);
  }

  FakeProcessStarter starter_;
};

TEST_F(LaunchProgramDialogTest, IsDialog118WithItsPicturesAndHelp) {
  ExpectDialog(118, 2, STANDARD_HELP, "help 131199");
}

TEST_F(LaunchProgramDialogTest, AddsFromTheDefaultInstance) {
  files_.files["dir\\Default"] = FileOf("page.exe", "C:\\tools", "%n");
  Add().Open();
  EXPECT_EQ(view_.title, "Add Launch Program Instance");
  EXPECT_EQ(view_.texts[kName], "");
  EXPECT_EQ(view_.texts[kProgram], "page.exe");
  EXPECT_EQ(view_.texts[kWorkingPath], "C:\\tools");
  EXPECT_EQ(view_.texts[kArguments], "%n");
}

TEST_F(LaunchProgramDialogTest, OnlyLogsAMissingDefaultInstance) {
  ExpectMissingDefaultOnlyLogged("Add Launch Program Instance", "Default Program");
}

TEST_F(LaunchProgramDialogTest, EditsTheNamedInstance) {
  files_.files["dir\\night"] = FileOf("page.exe", "C:\\tools", "");
  Edit("night").Open();
  EXPECT_EQ(view_.title, "Edit Launch Program Instance");
  EXPECT_EQ(view_.texts[kName], "night");
  EXPECT_EQ(view_.texts[kProgram], "page.exe");
}

TEST_F(LaunchProgramDialogTest, LeavesTitleAndFieldsUnsetWhenTheInstanceCannotBeEdited) {
  ExpectLoadFailureTold("");
  EXPECT_THAT(view_.texts, IsEmpty());
}

TEST_F(LaunchProgramDialogTest, AsksForControl203AfterANameError) {
  InstanceDialog& dialog = Add();
  dialog.Press(STANDARD_OK);
  files_.files["dir\\night"] = "";
  view_.texts[kName] = "night";
  dialog.Press(STANDARD_OK);
  EXPECT_THAT(view_.events, ElementsAre(kNameMissing, "focus 203", kNameTaken, "focus 203"));
}

TEST_F(LaunchProgramDialogTest, WantsAProgramAndAWorkingPathInThisOrder) {
  InstanceDialog& dialog = Add();
  view_.texts[kName] = "night";
  dialog.Press(STANDARD_OK);
  view_.texts[kProgram] = "page.exe";
  dialog.Press(STANDARD_OK);
  view_.texts[kWorkingPath] = "C:\\tools";
  dialog.Press(STANDARD_OK);
  EXPECT_THAT(
      view_.events,
      ElementsAre("message Invalid value - The 'Filename' field must have a value.", "focus 219",
                  "message Invalid value - The 'Working Path' field must have a value.",
                  "focus 222", "close"));
  EXPECT_EQ(files_.files["dir\\night"], FileOf("page.exe", "C:\\tools", ""));
}

TEST_F(LaunchProgramDialogTest, BrowsesForAProgram) {
  InstanceDialog& dialog = Add();
  view_.texts[kProgram] = "old.exe";
  view_.chosen_file = "C:\\new.exe";
  dialog.Press(kBrowseProgram);
  EXPECT_THAT(view_.events, ElementsAre("choose file 354 *.exe from old.exe"));
  EXPECT_EQ(view_.texts[kProgram], "C:\\new.exe");
}

TEST_F(LaunchProgramDialogTest, BrowsesForAWorkingPath) {
  InstanceDialog& dialog = Add();
  view_.texts[kWorkingPath] = "C:\\old";
  dialog.Press(kBrowseWorkingPath);
  EXPECT_EQ(view_.texts[kWorkingPath], "C:\\old");
  view_.chosen_directory = "C:\\new";
  dialog.Press(kBrowseWorkingPath);
  EXPECT_EQ(view_.texts[kWorkingPath], "C:\\new");
  EXPECT_THAT(view_.events, ElementsAre("choose directory Select Directory...",
                                        "choose directory Select Directory..."));
  EXPECT_THAT(starter_.working_directories, ElementsAre("C:\\new"));
}

TEST_F(LaunchProgramDialogTest, RefusesAWorkingPathThatCannotBeEntered) {
  starter_.succeeds = false;
  InstanceDialog& dialog = Add();
  view_.texts[kWorkingPath] = "C:\\old";
  view_.chosen_directory = "";
  dialog.Press(kBrowseWorkingPath);
  EXPECT_THAT(view_.events,
              ElementsAre("choose directory Select Directory...", "error Directory is invalid"));
  EXPECT_EQ(view_.texts[kWorkingPath], "C:\\old");
}

}  // namespace
}  // namespace brantel
