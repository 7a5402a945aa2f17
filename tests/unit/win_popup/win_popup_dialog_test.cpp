#include "win_popup/win_popup_dialog.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "instance/instance_codec.h"
#include "tests/unit/dialog/instance_dialog_fixture.h"
#include "tests/unit/win_popup/fake_network.h"
#include "tests/unit/win_popup/fake_network_system.h"
#include "win_popup/win_popup_description.h"

namespace brantel {
namespace {

using ::testing::ElementsAre;
using ::testing::IsEmpty;

constexpr int kMessageEdit = 201;
constexpr int kName = 203;
constexpr int kDestination = 215;

// Threads whose work is done when the test says so.
class FakeWorkerThreads final : public WorkerThreads {
 public:
  std::vector<std::function<void()>> waiting;

  void Start(std::function<void()> work) override { waiting.push_back(std::move(work)); }

  void Work() {
    for (auto& work : std::exchange(waiting, {})) {
      work();
    }
  }
};

std::string FileOf(const std::string& destination, const std::string& message) {
  Instance instance(2);
  instance.set_text(win_popup_field::kDestination, destination);
  instance.set_text(win_popup_field::kMessage, message);
  return EncodeInstance(kWinPopup.instances, instance);
}

class WinPopupDialogTest : public ClassDialogFixture {
 protected:
  std::unique_ptr<InstanceDialog> Make(InstanceDialogCall call) override {
    return std::make_unique<WinPopupDialog>(view_, files_, std::move(call),
                                            DestinationSources{system_, network_, workers_});
  }

  void Enter(const std::string& name, const std::string& destination, const std::string& message) {
    view_.texts[kName] = name;
    view_.texts[kDestination] = destination;
    view_.texts[kMessageEdit] = message;
  }

  FakeNetworkSystem system_;
  FakeNetwork network_;
  FakeWorkerThreads workers_;
};

TEST_F(WinPopupDialogTest, IsDialog116WithTheHelpFilesContents) {
  ExpectDialog(116, 0, STANDARD_HELP, "help contents");
}

TEST_F(WinPopupDialogTest, AddsFromNothing) {
  files_.files["dir\\Default"] = FileOf("pc9", "down");
  Add().Open();
  EXPECT_EQ(view_.title, "Add WinPopup Instance");
  EXPECT_THAT(view_.texts, IsEmpty());
  EXPECT_THAT(files_.calls, IsEmpty());
  EXPECT_THAT(host_.log, IsEmpty());
}

TEST_F(WinPopupDialogTest, EditsWhatIsStored) {
  files_.files["dir\\night"] = FileOf("pc9", "down");
  Edit("night").Open();
  EXPECT_EQ(view_.title, "Edit WinPopup Instance");
  EXPECT_EQ(view_.texts[kName], "night");
  EXPECT_EQ(view_.texts[kDestination], "pc9");
  EXPECT_EQ(view_.texts[kMessageEdit], "down");
}

TEST_F(WinPopupDialogTest, TellsWhenTheInstanceCannotBeLoaded) {
  ExpectLoadFailureTold("Edit WinPopup Instance", "\r\n");
}

TEST_F(WinPopupDialogTest, ChecksTheNameThenTheFieldsThenWhetherTheNameIsTaken) {
  files_.files["dir\\night"] = FileOf("pc9", "down");
  Add().Open();
  EXPECT_THAT(PressOk(*dialog_), ElementsAre(kNameMissing, "focus 203"));
  view_.texts[kName] = "night";
  EXPECT_THAT(PressOk(*dialog_),
              ElementsAre("message Invalid value - The 'Destination' field must have a value.",
                          "focus 215"));
  view_.texts[kDestination] = "pc9";
  EXPECT_THAT(
      PressOk(*dialog_),
      ElementsAre("message Invalid value - The 'Message' field must have a value.", "focus 201"));
  view_.texts[kMessageEdit] = "up";
  EXPECT_THAT(PressOk(*dialog_), ElementsAre(kNameTaken, "focus 203"));
  view_.texts[kName] = "day";
  EXPECT_THAT(PressOk(*dialog_), ElementsAre("close"));
  EXPECT_EQ(files_.files["dir\\day"], FileOf("pc9", "up"));
  EXPECT_EQ(dialog_->saved_name(), "day");
}

TEST_F(WinPopupDialogTest, TakesThisComputerForADestination) {
  Add().Open();
  Enter("night", "(local)", "down");
  EXPECT_THAT(PressOk(*dialog_), ElementsAre("close"));
  EXPECT_EQ(files_.files["dir\\night"], FileOf("(local)", "down"));
}

TEST_F(WinPopupDialogTest, StaysOpenWhenTheInstanceCannotBeSaved) {
  Add().Open();
  Enter("night", "pc9", "down");
  files_.held = {"dir\\night"};
  EXPECT_THAT(PressOk(*dialog_), ElementsAre("message Error saving instance file"));
}

TEST_F(WinPopupDialogTest, RenamesAnInstance) {
  files_.files["dir\\night"] = FileOf("pc9", "down");
  Edit("night").Open();
  view_.texts[kName] = "day";
  EXPECT_THAT(PressOk(*dialog_), ElementsAre("close"));
  EXPECT_EQ(files_.files.size(), 1U);
  EXPECT_EQ(files_.files["dir\\day"], FileOf("pc9", "down"));
}

TEST_F(WinPopupDialogTest, TakesTextsOfAnyLength) {
  Add().Open();
  Enter("night", std::string(3000, 'd'), std::string(5000, 'm'));
  EXPECT_THAT(PressOk(*dialog_), ElementsAre("close"));
  EXPECT_EQ(files_.files["dir\\night"], FileOf(std::string(3000, 'd'), std::string(5000, 'm')));
}

// The list of destinations.

TEST_F(WinPopupDialogTest, LeavesTheSearchToAWorker) {
  system_.message_names = {u"WATCH"};
  Add().Open();
  EXPECT_THAT(system_.calls, ElementsAre("load netapi32.dll"));
  EXPECT_THAT(network_.calls, IsEmpty());
  EXPECT_EQ(workers_.waiting.size(), 1U);
}

TEST_F(WinPopupDialogTest, ListsNamesAsTheDialogComesToThem) {
  system_.message_names = {u"WATCH"};
  network_.levels[""] = {{Domain("OPS"), Server("PC7")}};
  Add().Open();
  workers_.Work();
  EXPECT_THAT(view_.lists[kDestination], IsEmpty());
  view_.tasks->Do();
  EXPECT_THAT(view_.lists[kDestination], ElementsAre("WATCH", "OPS*", "PC7"));
}

TEST_F(WinPopupDialogTest, LeavesOutWhatTheNetworkRepeatsButNotTheNamesOfThisComputer) {
  system_.message_names = {u"WATCH", u"WATCH", u"PC7"};
  network_.levels[""] = {{Server("PC7"), Server("PC8"), Server("PC8"), Server("pc8")}};
  Add().Open();
  workers_.Work();
  view_.tasks->Do();
  EXPECT_THAT(view_.lists[kDestination], ElementsAre("WATCH", "WATCH", "PC7", "PC8", "pc8"));
}

TEST_F(WinPopupDialogTest, LeavesTheDestinationAsItIsWhileNamesAppear) {
  network_.levels[""] = {{Server("PC7")}};
  files_.files["dir\\night"] = FileOf("pc9", "down");
  Edit("night").Open();
  workers_.Work();
  view_.tasks->Do();
  EXPECT_EQ(view_.texts[kDestination], "pc9");
}

TEST_F(WinPopupDialogTest, SearchesOnlyWhereTheLibraryKnowsNames) {
  system_.missing = {NetworkEntry::kMessageNameEnum};
  Add().Open();
  EXPECT_THAT(workers_.waiting, IsEmpty());

  system_.missing = {NetworkEntry::kWkstaGetInfo};
  Add().Open();
  EXPECT_THAT(workers_.waiting, IsEmpty());

  system_.missing = {NetworkEntry::kMessageBufferSend, NetworkEntry::kServerEnum};
  Add().Open();
  EXPECT_EQ(workers_.waiting.size(), 1U);
}

TEST_F(WinPopupDialogTest, LeavesTheListEmptyOnTheWindows95Family) {
  system_.family = WindowsFamily::kWindows95;
  system_.message_names = {u"WATCH"};
  Add().Open();
  EXPECT_THAT(system_.calls, ElementsAre("load svrapi.dll"));
  EXPECT_THAT(workers_.waiting, IsEmpty());
}

TEST_F(WinPopupDialogTest, IsNotTouchedByAWorkerThatOutlivesIt) {
  system_.message_names = {u"WATCH"};
  network_.levels[""] = {{Server("PC7")}};
  Add().Open();
  view_.tasks->is_open = false;
  dialog_.reset();
  EXPECT_THAT(system_.calls, ElementsAre("load netapi32.dll"));  // the worker holds it
  workers_.Work();
  EXPECT_THAT(view_.tasks->left, IsEmpty());
  EXPECT_THAT(network_.calls, IsEmpty());  // nobody wants to know any more
  EXPECT_THAT(system_.calls, ElementsAre("load netapi32.dll", "names", "free"));
}

}  // namespace
}  // namespace brantel
