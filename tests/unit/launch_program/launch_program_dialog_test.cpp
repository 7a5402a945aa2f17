#include "launch_program/launch_program_dialog.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "instance/instance_codec.h"
#include "launch_program/launch_program_description.h"
#include "tests/unit/dialog/fake_dialog_view.h"
#include "tests/unit/instance/fake_instance_files.h"
#include "tests/unit/launch_program/fake_process_starter.h"
#include "tests/unit/notifier/fake_notifier_host.h"

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

class LaunchProgramDialogTest : public ::testing::Test {
 protected:
  LaunchProgramDialog Add() {
    return {view_, files_, {.directory = "dir", .host = &host_}, starter_};
  }
  LaunchProgramDialog Edit(const std::string& name) {
    return {view_,
            files_,
            {"dir", InstanceArgument{std::u16string(name.begin(), name.end()), name}, &host_},
            starter_};
  }

  FakeDialogView view_;
  FakeInstanceFiles files_;
  FakeNotifierHost host_;
  FakeProcessStarter starter_;
};

TEST_F(LaunchProgramDialogTest, IsDialog118WithItsPicturesAndHelp) {
  LaunchProgramDialog dialog = Add();
  EXPECT_EQ(dialog.template_id(), 118);
  EXPECT_EQ(dialog.bitmap_buttons().size(), 2U);
  dialog.Press(STANDARD_HELP);
  EXPECT_THAT(view_.events, ElementsAre("help 131199"));
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
  Add().Open();
  EXPECT_EQ(view_.title, "Add Launch Program Instance");
  EXPECT_THAT(host_.log,
              ElementsAre("Default Program", " - Failed to load notification from disk.", "\r"));
  EXPECT_THAT(view_.events, IsEmpty());
}

TEST_F(LaunchProgramDialogTest, EditsTheNamedInstance) {
  files_.files["dir\\night"] = FileOf("page.exe", "C:\\tools", "");
  Edit("night").Open();
  EXPECT_EQ(view_.title, "Edit Launch Program Instance");
  EXPECT_EQ(view_.texts[kName], "night");
  EXPECT_EQ(view_.texts[kProgram], "page.exe");
}

TEST_F(LaunchProgramDialogTest, LeavesTitleAndFieldsUnsetWhenTheInstanceCannotBeEdited) {
  Edit("night").Open();
  EXPECT_EQ(view_.title, "");
  EXPECT_THAT(view_.texts, IsEmpty());
  EXPECT_THAT(host_.log, ElementsAre("night", " - Failed to load notification from disk.", "\r"));
  EXPECT_THAT(view_.events, ElementsAre("message Error loading the instance file"));
}

TEST_F(LaunchProgramDialogTest, AsksForControl203AfterANameError) {
  LaunchProgramDialog dialog = Add();
  dialog.Press(STANDARD_OK);
  files_.files["dir\\night"] = "";
  view_.texts[kName] = "night";
  dialog.Press(STANDARD_OK);
  EXPECT_THAT(
      view_.events,
      ElementsAre("message Invalid value - The 'Name' field must have a value", "focus 203",
                  "message Instance name already exists.  Please choose another name [Invalid "
                  "Instance Name]",
                  "focus 203"));
}

TEST_F(LaunchProgramDialogTest, WantsAProgramAndAWorkingPathInThisOrder) {
  LaunchProgramDialog dialog = Add();
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
  LaunchProgramDialog dialog = Add();
  view_.texts[kProgram] = "old.exe";
  view_.chosen_file = "C:\\new.exe";
  dialog.Press(kBrowseProgram);
  EXPECT_THAT(view_.events, ElementsAre("choose file 354 *.exe from old.exe"));
  EXPECT_EQ(view_.texts[kProgram], "C:\\new.exe");
}

TEST_F(LaunchProgramDialogTest, BrowsesForAWorkingPath) {
  LaunchProgramDialog dialog = Add();
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
  LaunchProgramDialog dialog = Add();
  view_.texts[kWorkingPath] = "C:\\old";
  view_.chosen_directory = "";
  dialog.Press(kBrowseWorkingPath);
  EXPECT_THAT(view_.events,
              ElementsAre("choose directory Select Directory...", "error Directory is invalid"));
  EXPECT_EQ(view_.texts[kWorkingPath], "C:\\old");
}

}  // namespace
}  // namespace brantel
