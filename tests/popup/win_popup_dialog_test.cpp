// The dialog as an operator meets it, beside its list.
#include <windows.h>
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <filesystem>

#include "tests/module/help_viewer.h"
#include "tests/popup/win_popup_fixture.h"

namespace brantel {
namespace {

using ::testing::ElementsAre;
using ::testing::IsEmpty;
using ::testing::Pair;

template <std::size_t size>
std::string Bytes(const char (&literal)[size]) {
  return {literal, size - 1};
}

class WinPopupDialog : public WinPopupFixture {
 protected:
  void Store(const wchar_t* name, const std::string& file) {
    ASSERT_TRUE(std::filesystem::exists(scratch_.Write(name, file)));
  }
};

TEST_F(WinPopupDialog, HasItsControlsInOrder) {
  Add();
  constexpr DWORD kSharedStyle = WS_CHILD | WS_VISIBLE;
  std::vector<ExpectedControl> controls;
  for (HWND child : Children(session_->dialog())) {
    const auto style = static_cast<DWORD>(GetWindowLongA(child, GWL_STYLE));
    EXPECT_EQ(style & kSharedStyle, kSharedStyle);
    controls.push_back({static_cast<SHORT>(GetDlgCtrlID(child)), WindowClass(child),
                        WindowText(child),
                        style & ~(kSharedStyle | WS_GROUP | WS_BORDER | CBS_HASSTRINGS)});
  }
  EXPECT_EQ(controls, expected_.controls);
}

TEST_F(WinPopupDialog, KeepsItsControlsApartAndInside) {
  Add();
  RECT inside{};
  GetClientRect(session_->dialog(), &inside);
  std::vector<RECT> areas;
  for (HWND child : Children(session_->dialog())) {
    RECT area{};
    GetWindowRect(child, &area);
    MapWindowPoints(nullptr, session_->dialog(), reinterpret_cast<POINT*>(&area), 2);
    RECT common{};
    IntersectRect(&common, &area, &inside);
    EXPECT_TRUE(EqualRect(&common, &area)) << WindowText(child);
    for (const RECT& other : areas) {
      EXPECT_FALSE(IntersectRect(&common, &area, &other)) << WindowText(child);
    }
    areas.push_back(area);
  }
}

TEST_F(WinPopupDialog, LeadsTheTabKeyThroughItsControlsInOrder) {
  Add();
  std::vector<int> stops;
  do {
    stops.push_back(session_->Focus());
    session_->PressKey(VK_TAB);
  } while (session_->Focus() != stops.front() && stops.size() < 50);
  EXPECT_THAT(stops, ElementsAre(203, 215, 201, 1, 2, 9));
}

TEST_F(WinPopupDialog, LeadsAccessKeysToTheFields) {
  Add();
  for (const ExpectedEdit& edit : expected_.edits) {
    session_->PressAltAnd(edit.access_key);
    EXPECT_EQ(session_->Focus(), edit.control) << edit.access_key;
  }
}

TEST_F(WinPopupDialog, OpensEmptyForANewInstanceWhateverTheDefaultIs) {
  Store(L"Default", expected_.sample_file);
  Add();
  EXPECT_EQ(WindowText(session_->dialog()), "Add WinPopup Instance");
  for (const ExpectedEdit& edit : expected_.edits) {
    EXPECT_EQ(session_->Text(edit.control), "") << edit.control;
  }
  EXPECT_EQ(session_->Focus(), kNameEdit);
  EXPECT_THAT(host_.log_calls, IsEmpty());
}

TEST_F(WinPopupDialog, OpensForAnInstanceWithItsNameAndValues) {
  Store(L"night", expected_.sample_file);
  Edit(L"night");
  EXPECT_EQ(WindowText(session_->dialog()), "Edit WinPopup Instance");
  for (const ExpectedEdit& edit : expected_.edits) {
    EXPECT_EQ(session_->Text(edit.control), edit.sample);
  }
}

TEST_F(WinPopupDialog, TellsAndLogsWhenTheInstanceIsMissing) {
  Edit(L"night");
  ExpectMessage("Error loading the instance file");
  EXPECT_EQ(WindowText(session_->dialog()), "Edit WinPopup Instance");
  EXPECT_THAT(host_.log_calls, ElementsAre(LogCall{1, L"night"},
                                           LogCall{1, L" - Failed to load notification from disk."},
                                           LogCall{1, L"\r\n"}));
}

TEST_F(WinPopupDialog, ChecksTheNameThenTheFieldsThenWhetherTheNameIsTaken) {
  Store(L"night", expected_.sample_file);
  Add();
  for (const ExpectedEdit& edit : expected_.edits) {
    session_->Click(kOk);
    ExpectMessage(edit.missing_message);
    EXPECT_EQ(session_->Focus(), edit.control);
    session_->SetText(edit.control, edit.sample);
  }
  session_->Click(kOk);
  ExpectMessage("Instance name already exists.  Please choose another name",
                "Invalid Instance Name");
  EXPECT_EQ(session_->Focus(), kNameEdit);
  session_->SetText(kNameEdit, "day");
  session_->Click(kOk);
  ExpectEnd(S_OK, L"day");
  EXPECT_THAT(scratch_.Files(), ElementsAre(Pair(L"day", expected_.sample_file),
                                            Pair(L"night", expected_.sample_file)));
}

TEST_F(WinPopupDialog, TakesThisComputerForADestination) {
  Add();
  EnterSamples();
  session_->SetText(kDestinationBox, "(local)");
  session_->Click(kOk);
  ExpectEnd(S_OK, L"night");
  EXPECT_THAT(scratch_.Files(), ElementsAre(Pair(L"night", expected_.sample_file.substr(0, 16) +
                                                               Bytes("\x08\0\0\0(local)\0"
                                                                     "\x0B\0\0\0%n is down\0"))));
}

TEST_F(WinPopupDialog, RenamesAnInstance) {
  Store(L"night", expected_.sample_file);
  Edit(L"night");
  session_->SetText(kNameEdit, "day");
  session_->Click(kOk);
  ExpectEnd(S_OK, L"day");
  EXPECT_THAT(scratch_.Files(), ElementsAre(Pair(L"day", expected_.sample_file)));
}

TEST_F(WinPopupDialog, StaysOpenWhenTheInstanceCannotBeSaved) {
  Add();
  EnterSamples();
  session_->SetText(kNameEdit, "a/b");
  session_->Click(kOk);
  ExpectMessage("Error saving instance file");
  session_->Click(kCancel);
  ExpectCancelled();
}

TEST_F(WinPopupDialog, LetsTextsOfAnyLengthBeTyped) {
  Add();
  EnterSamples();
  for (const int control : {kDestinationBox, kMessageEdit}) {
    session_->SetText(control, std::string(40000, 'x'));
    session_->PressAltAnd(control == kMessageEdit ? 'm' : 's');
    session_->PressKey(VK_END);
    session_->Type("yz");
    EXPECT_EQ(session_->Text(control), std::string(40000, 'x') + "yz");
  }
}

TEST_F(WinPopupDialog, ShowsTheHelpFilesContents) {
  HelpViewer viewer;
  Add();
  session_->Click(kHelp);
  EXPECT_THAT(viewer.requests(), ElementsAre(HelpRequest{"vantrel.hlp", HELP_CONTENTS, 0}));
}

}  // namespace
}  // namespace brantel
