#include <windows.h>
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "tests/module/dialog_looks.h"
#include "tests/module/help_viewer.h"
#include "tests/module/modem_dialog_fixture.h"

namespace brantel {
namespace {

using namespace std::string_literals;
using ::testing::ElementsAre;
using ::testing::IsEmpty;

constexpr int kDialingOptions = 219;

// Controls of the port settings.
constexpr int kDialString = 218;
constexpr int kTimeout = 220;

class BeeperDialogTest : public ModemDialogFixture {
 protected:
  BeeperDialogTest() : ModemDialogFixture(ExpectedBeeperDialog(), kBeeperSettingsKey, 228) {}

  void PressKeyInSettings(WORD key) {
    PostMessageA(GetDlgItem(session_->popup(), kTimeout), WM_KEYDOWN, key, 1);
    session_->Settle();
  }
};

TEST_F(BeeperDialogTest, HasItsControlsInTheirGroups) {
  Add();
  EXPECT_THAT(ControlsInGroup(session_->dialog(), "Settings:"), ElementsAre(218, 219));
  EXPECT_THAT(ControlsInGroup(session_->dialog(), "Signal Codes:"), ElementsAre(220, 221, 222));
}

TEST_F(BeeperDialogTest, OffersTheProfilesAndTheDialStringOfTheSelectedOne) {
  StoreSetting(L"", L"Settings_DialString", L"ATDT0");
  StoreSetting(L"\\01", L"Settings_DialString", L"ATDT1");
  Add();
  EXPECT_EQ(WindowText(session_->dialog()), "Add Beeper  Instance");
  EXPECT_EQ(session_->Text(kProfiles), "Primary");
  EXPECT_EQ(session_->Text(kDialingOptions), "ATDT0");
  PressInList(VK_DOWN);
  EXPECT_EQ(session_->Text(kProfiles), "Alternate 1");
  EXPECT_EQ(session_->Text(kDialingOptions), "ATDT1");
  PressInList(VK_DOWN);
  EXPECT_EQ(session_->Text(kProfiles), "Alternate 2");
  EXPECT_EQ(session_->Text(kDialingOptions), "ATDT%s,,,,%s#");
  PressInList(VK_DOWN);
  EXPECT_EQ(Selection(), 2);
}

TEST_F(BeeperDialogTest, SavesWhatWasEnteredWithTheSelectedProfile) {
  Add();
  PressInList(VK_END);
  EnterSamples();
  session_->Click(kOk);
  ExpectEnd(S_OK, L"night");
  EXPECT_EQ(Stored(L"night"), FileWith(2));
}

TEST_F(BeeperDialogTest, ChangesNothingInAnInstanceThatIsOpenedAndSaved) {
  for (const char profile : {char{0}, char{1}, char{2}, char{3}, char{10}}) {
    Store(L"night", FileWith(profile));
    Edit(L"night");
    EXPECT_EQ(WindowText(session_->dialog()), "Edit Beeper Instance");
    for (const ExpectedEdit& edit : expected_.edits) {
      EXPECT_EQ(session_->Text(edit.control), edit.sample);
    }
    EXPECT_EQ(Selection(), profile <= 2 ? profile : CB_ERR);
    session_->Click(kOk);
    ExpectEnd(S_OK, L"night");
    EXPECT_EQ(Stored(L"night"), FileWith(profile));
  }
}

TEST_F(BeeperDialogTest, OffersTheProfilesDialStringInPlaceOfTheStoredDialingOptions) {
  const std::string stored = "\x07"s + std::string(3, '\0') + "ATDP%s"s + '\0';
  const std::string shown = "\x0E"s + std::string(3, '\0') + "ATDT%s,,,,%s#"s + '\0';
  std::string file = FileWith(0);
  file.replace(file.find(shown), shown.size(), stored);
  Store(L"night", file);
  Edit(L"night");
  EXPECT_EQ(session_->Text(kDialingOptions), "ATDT%s,,,,%s#");
  session_->Click(kCancel);
  EXPECT_EQ(Stored(L"night"), file);
  Edit(L"night");
  session_->Click(kOk);
  EXPECT_EQ(Stored(L"night"), FileWith(0));
}

// The port settings.

TEST_F(BeeperDialogTest, OpensThePortSettingsOverItself) {
  Add();
  HWND settings = OpenSettings();
  EXPECT_EQ(GetWindow(settings, GW_OWNER), session_->dialog());
  EXPECT_FALSE(IsWindowEnabled(session_->dialog()));
  EXPECT_EQ(WindowText(settings), "Digital Beeper ComPort Settings");
  EXPECT_THAT(TextsOf(settings),
              ElementsAre("-1 &Dial string:", "218 ATDT%s,,,,%s#", "-1 (ATDT%s,,,,%s#)",
                          "-1 COM Port:", "227 COM &1", "228 COM &2", "229 COM &3", "230 COM &4",
                          "-1 Baud Rate:", "224 300", "225 1200", "226 2400",
                          "-1 &Modem initialization string:", "219 ATE0Q0V1X4",
                          "-1 &Timeout:", "220 5", "1 OK", "2 Cancel", "9 Help"));
  EXPECT_THAT(CheckedSettings(), ElementsAre(k300Baud, kCom1));
  ExpectControlsApart(settings);
  ExpectTextsWhole(settings);
  EXPECT_THAT(ControlsInGroup(settings, "COM Port:"), ElementsAre(227, 228, 229, 230));
  EXPECT_THAT(ControlsInGroup(settings, "Baud Rate:"), ElementsAre(224, 225, 226));
  session_->ClickInPopup(kCancel);
  EXPECT_EQ(session_->popup(), nullptr);
  EXPECT_TRUE(IsWindowEnabled(session_->dialog()));
}

TEST_F(BeeperDialogTest, LeadsTheTabKeyThroughThePortSettings) {
  StoreSetting(L"", L"Settings_COMPort", L"COM4");
  StoreSetting(L"", L"Settings_Baud", L"9600");
  Add();
  HWND settings = OpenSettings();
  // A group is one stop: at its checked button, or at the first where none is checked.
  EXPECT_THAT(TabStops(settings), ElementsAre(218, 230, 224, 219, 220, 1, 2, 9));
}

TEST_F(BeeperDialogTest, ShowsTheHelpOfThePortSettings) {
  HelpViewer viewer;
  Add();
  HWND settings = OpenSettings();
  const HelpRequest wanted = {"vantrel.hlp", HELP_CONTEXT, 200000};
  session_->ClickInPopup(kHelp);
  EXPECT_THAT(viewer.requests(), ElementsAre(wanted));
  PostMessageA(GetDlgItem(settings, kDialString), kContextHelpKey, 0, 0);
  session_->Settle();
  EXPECT_THAT(viewer.requests(), ElementsAre(wanted, wanted));
  EXPECT_EQ(session_->popup(), settings);
}

TEST_F(BeeperDialogTest, WritesThePortSettingsOfTheSelectedProfile) {
  Add();
  PressInList(VK_DOWN);
  OpenSettings();
  EnterSetting(kDialString, "ATDP%s");
  EnterSetting(kModemString, "ATZ");
  EnterSetting(kTimeout, "250");
  session_->ClickInPopup(k2400Baud);
  session_->ClickInPopup(kCom4);
  EXPECT_THAT(CheckedSettings(), ElementsAre(k2400Baud, kCom4));
  session_->ClickInPopup(kOk);
  EXPECT_EQ(session_->popup(), nullptr);
  EXPECT_THAT(
      StoredSettings(L"\\01"),
      ElementsAre("Settings_Baud = 2400", "Settings_COMPort = COM4", "Settings_DialString = ATDP%s",
                  "Settings_ModemString = ATZ", "Settings_Timeout = 250"));
  OpenSettings();
  EXPECT_EQ(SettingsText(kDialString), "ATDP%s");
  EXPECT_EQ(SettingsText(kModemString), "ATZ");
  EXPECT_EQ(SettingsText(kTimeout), "250");
  EXPECT_THAT(CheckedSettings(), ElementsAre(k2400Baud, kCom4));
}

TEST_F(BeeperDialogTest, KeepsPortSettingsForWhichItHasNoButton) {
  StoreSetting(L"\\05", L"Settings_COMPort", L"COM7");
  StoreSetting(L"\\05", L"Settings_Baud", L"9600");
  Store(L"night", FileWith(5));
  Edit(L"night");
  OpenSettings();
  EXPECT_THAT(CheckedSettings(), IsEmpty());
  session_->ClickInPopup(kOk);
  EXPECT_THAT(StoredSettings(L"\\05"),
              ElementsAre("Settings_Baud = 9600", "Settings_COMPort = COM7",
                          "Settings_DialString = ATDT%s,,,,%s#",
                          "Settings_ModemString = ATE0Q0V1X4", "Settings_Timeout = 5"));
}

TEST_F(BeeperDialogTest, TakesEnterForOkAndEscapeForCancelInThePortSettings) {
  Add();
  OpenSettings();
  EnterSetting(kTimeout, "250");
  PressKeyInSettings(VK_ESCAPE);
  EXPECT_EQ(session_->popup(), nullptr);
  OpenSettings();
  EXPECT_EQ(SettingsText(kTimeout), "5");
  EnterSetting(kTimeout, "250");
  PressKeyInSettings(VK_RETURN);
  EXPECT_EQ(session_->popup(), nullptr);
  OpenSettings();
  EXPECT_EQ(SettingsText(kTimeout), "250");
  EXPECT_NE(session_->dialog(), nullptr);
}

TEST_F(BeeperDialogTest, WritesNoPortSettingsOnCancel) {
  StoreSetting(L"", L"Settings_Timeout", L"9");
  Add();
  OpenSettings();
  EnterSetting(kTimeout, "250");
  session_->ClickInPopup(kCancel);
  EXPECT_EQ(DumpTree(HKEY_LOCAL_MACHINE, kBeeperSettingsKey), "Settings_Timeout = '9'\n");
}

}  // namespace
}  // namespace brantel
