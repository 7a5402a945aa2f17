#include "launch_program/launch_program.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <memory>

#include "instance/instance_codec.h"
#include "launch_program/launch_program_description.h"
#include "tests/unit/instance/fake_instance_files.h"
#include "tests/unit/launch_program/fake_process_starter.h"
#include "tests/unit/notifier/fake_notifier_host.h"

namespace brantel {
namespace {

using ::testing::ElementsAre;
using ::testing::IsEmpty;

constexpr Result kHostFailure = static_cast<Result>(0x80070057);

class LaunchProgramTest : public ::testing::Test {
 protected:
  void Store(const std::string& program, const std::string& directory,
             const std::string& arguments) {
    Instance instance(3);
    instance.set_text(launch_program_field::kProgramFilename, program);
    instance.set_text(launch_program_field::kWorkingPath, directory);
    instance.set_text(launch_program_field::kProgramArguments, arguments);
    files_.files["alert"] = EncodeInstance(kLaunchProgram.instances, instance);
  }

  Result Send() { return notifier_.Send({u"alert", "alert"}, &host_); }

  FakeInstanceFiles files_;
  FakeProcessStarter starter_;
  FakeNotifierHost host_;
  LaunchProgram notifier_{files_, starter_};
};

TEST_F(LaunchProgramTest, BindsTheHostThatItIsGivenAndNeedsNothingElse) {
  const auto host = std::make_shared<FakeNotifierHost>();
  EXPECT_EQ(notifier_.Initialize([&] { return host; }), host);
  EXPECT_EQ(notifier_.Initialize([] { return nullptr; }), nullptr);
}

TEST_F(LaunchProgramTest, StartsTheProgramWithExpandedArguments) {
  Store("C:\\tools\\page.exe", "C:\\tools", "--device %n");
  host_.expansions = {{kOk, "--device router7"}};

  EXPECT_EQ(Send(), kOk);

  EXPECT_THAT(host_.expanded_templates, ElementsAre("--device %n"));
  EXPECT_THAT(starter_.command_lines, ElementsAre("C:\\tools\\page.exe --device router7"));
  EXPECT_THAT(starter_.working_directories, ElementsAre("C:\\tools"));
  EXPECT_THAT(host_.log, IsEmpty());
}

TEST_F(LaunchProgramTest, AppendsABlankAlsoWithoutArguments) {
  Store("page.exe", "", "");
  EXPECT_EQ(Send(), kOk);
  EXPECT_THAT(host_.expanded_templates, ElementsAre(""));
  EXPECT_THAT(host_.empty_texts, ElementsAre(EmptyText::kNull));
  EXPECT_THAT(starter_.command_lines, ElementsAre("page.exe "));
  EXPECT_THAT(starter_.working_directories, ElementsAre(""));
}

TEST_F(LaunchProgramTest, DoesNotQuoteAFilenameWithBlanks) {
  Store("C:\\my tools\\page.exe", "", "x");
  EXPECT_EQ(Send(), kOk);
  EXPECT_THAT(starter_.command_lines, ElementsAre("C:\\my tools\\page.exe x"));
}

TEST_F(LaunchProgramTest, FailsForAnEmptyArgumentBeforeAnythingElse) {
  EXPECT_EQ(notifier_.Send({u"", ""}, &host_), kFail);
  EXPECT_EQ(notifier_.Send({u"", ""}, nullptr), kFail);
  EXPECT_THAT(files_.calls, IsEmpty());
  EXPECT_THAT(host_.calls, IsEmpty());
}

TEST_F(LaunchProgramTest, DoesNothingAndSucceedsWithoutAHost) {
  Store("page.exe", "", "");
  EXPECT_EQ(notifier_.Send({u"alert", "alert"}, nullptr), kOk);
  EXPECT_THAT(files_.calls, IsEmpty());
  EXPECT_THAT(starter_.command_lines, IsEmpty());
}

TEST_F(LaunchProgramTest, LogsAnInstanceThatCannotBeLoaded) {
  EXPECT_EQ(Send(), kFail);
  EXPECT_THAT(host_.log, ElementsAre("alert", " - Failed to load notification from disk.", "\r"));
  EXPECT_THAT(starter_.command_lines, IsEmpty());
}

TEST_F(LaunchProgramTest, PassesTheHostsFailureThroughAndStartsNothing) {
  Store("page.exe", "", "%x");
  host_.expansions = {{kHostFailure, ""}};
  EXPECT_EQ(Send(), kHostFailure);
  EXPECT_THAT(starter_.command_lines, IsEmpty());
  EXPECT_THAT(host_.log, IsEmpty());
}

TEST_F(LaunchProgramTest, AnswersTheHostsSuccessCode) {
  Store("page.exe", "", "");
  host_.expansions = {{1, "x"}};
  EXPECT_EQ(Send(), 1);
}

TEST_F(LaunchProgramTest, FailsSilentlyWhenTheProgramCannotBeStarted) {
  Store("page.exe", "", "");
  starter_.succeeds = false;
  EXPECT_EQ(Send(), kFail);
  EXPECT_THAT(host_.log, IsEmpty());
}

}  // namespace
}  // namespace brantel
