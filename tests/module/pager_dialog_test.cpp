#include <windows.h>
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "tests/module/dialog_looks.h"
#include "tests/module/help_viewer.h"
#include "tests/module/modem_dialog_fixture.h"

namespace brantel {
namespace {

using ::testing::ElementsAre;
using ::testing::IsEmpty;

constexpr int kPassword = 219;
constexpr int kPagerMessage = 221;
constexpr int kTap = 231;
constexpr int kSmsTap = 232;
constexpr int kNtt = 233;
constexpr int kUcpSms = 235;

class PagerDialogTest : public ModemDialogFixture {
 protected:
  PagerDialogTest() : ModemDialogFixture(ExpectedPagerDialog(), kPagerSettingsKey, 234) {}

  // The sample instance with another protocol and profile.
  [[nodiscard]] std::string FileWith(const std::string& protocol, char profile) const {
    const std::string length(1, static_cast<char>(protocol.size() + 1));
    return expected_.sample_file.substr(0, expected_.sample_file.size() - 12) + length +
           std::string(3, '\0') + protocol + '\0' + profile + std::string(3, '\0');
  }

  [[nodiscard]] std::vector<int> CheckedProtocols() const {
    std::vector<int> checked;
    for (const int button : {kTap, kSmsTap, kNtt, kUcpSms}) {
      if (session_->IsChecked(button)) checked.push_back(button);
    }
    return checked;
  }
};

TEST_F(PagerDialogTest, HasItsProtocolsInOneGroup) {
  Add();
  EXPECT_THAT(ControlsInGroup(session_->dialog(), "Protocol"),
              ElementsAre(kTap, kSmsTap, kNtt, kUcpSms));
  EXPECT_THAT(CheckedProtocols(), ElementsAre(kTap));
  session_->Click(kUcpSms);
  EXPECT_THAT(CheckedProtocols(), ElementsAre(kUcpSms));
  EXPECT_THAT(TabStops(session_->dialog()),
              ElementsAre(222, 218, 219, 220, 221, 251, 234, kUcpSms, 1, 2, 9));
}

TEST_F(PagerDialogTest, LeadsArrowsThroughTheProtocolsAlone) {
  Add();
  session_->PressAltAnd('t');
  ASSERT_EQ(session_->Focus(), kTap);
  for (const int button : {kSmsTap, kNtt, kUcpSms, kTap}) {
    session_->PressKey(VK_DOWN);
    EXPECT_EQ(session_->Focus(), button);
    EXPECT_THAT(CheckedProtocols(), ElementsAre(button));
  }
}

TEST_F(PagerDialogTest, ChecksAProtocolByItsAccessKey) {
  Add();
  const std::vector<std::pair<char, int>> keys = {
      {'s', kSmsTap}, {'n', kNtt}, {'u', kUcpSms}, {'t', kTap}};
  for (const auto& [key, button] : keys) {
    session_->PressAltAnd(key);
    EXPECT_THAT(CheckedProtocols(), ElementsAre(button)) << key;
  }
}

TEST_F(PagerDialogTest, SavesTheProtocolAndTheProfileThatAreChosen) {
  Add();
  PressInList(VK_END);
  EnterSamples();
  session_->Click(kNtt);
  session_->Click(kOk);
  ExpectEnd(S_OK, L"night");
  EXPECT_EQ(Stored(L"night"), FileWith("NTT", 2));
}

TEST_F(PagerDialogTest, ChangesNothingInAnInstanceThatIsOpenedAndSaved) {
  const std::vector<std::pair<std::string, int>> protocols = {
      {"TAP", kTap}, {"SMS-TAP", kSmsTap}, {"NTT", kNtt}, {"UCP-SMS", kUcpSms}};
  for (const auto& [protocol, button] : protocols) {
    for (const char profile : {char{0}, char{2}, char{10}}) {
      Store(L"night", FileWith(protocol, profile));
      Edit(L"night");
      EXPECT_THAT(CheckedProtocols(), ElementsAre(button));
      EXPECT_EQ(Selection(), profile <= 2 ? profile : CB_ERR);
      session_->Click(kOk);
      ExpectEnd(S_OK, L"night");
      EXPECT_EQ(Stored(L"night"), FileWith(protocol, profile));
    }
  }
}

TEST_F(PagerDialogTest, SavesAProtocolThatItDoesNotKnowAsTap) {
  Store(L"night", FileWith("tap", 0));
  Edit(L"night");
  EXPECT_THAT(CheckedProtocols(), ElementsAre(kTap));
  session_->Click(kOk);
  ExpectEnd(S_OK, L"night");
  EXPECT_EQ(Stored(L"night"), FileWith("TAP", 0));
}

TEST_F(PagerDialogTest, AddsWithTapWhateverTheDefaultInstanceHas) {
  Store(L"Default", FileWith("NTT", 1));
  Add();
  EXPECT_THAT(CheckedProtocols(), ElementsAre(kTap));
  EXPECT_EQ(session_->Text(kProfiles), "Alternate 1");
  EXPECT_EQ(session_->Text(kPagerMessage), "%n is down");
}

TEST_F(PagerDialogTest, SharesAnAccessKeyBetweenThePasswordAndThePortSettings) {
  Add();
  session_->PressAltAnd('p');
  EXPECT_EQ(session_->Focus(), kPassword);
}

// The port settings.

TEST_F(PagerDialogTest, OpensThePortSettingsOverItself) {
  Add();
  HWND settings = OpenSettings();
  EXPECT_EQ(GetWindow(settings, GW_OWNER), session_->dialog());
  EXPECT_FALSE(IsWindowEnabled(session_->dialog()));
  EXPECT_EQ(WindowText(settings), "Alpha Pager ComPort Settings");
  EXPECT_THAT(TextsOf(settings),
              ElementsAre("-1 &Modem initialization string (ATE0):", "219 ATE0Q0V1X4",
                          "-1 Baud Rate:", "224 300", "225 1200", "226 2400",
                          "-1 COM Port:", "227 COM &1", "228 COM &2", "229 COM &3", "230 COM &4",
                          "235 &8N1", "1 OK", "2 Cancel", "9 Help"));
  EXPECT_THAT(CheckedSettings(), ElementsAre(k300Baud, kCom1));
  ExpectControlsApart(settings);
  ExpectTextsWhole(settings);
  EXPECT_THAT(ControlsInGroup(settings, "Baud Rate:"), ElementsAre(224, 225, 226));
  EXPECT_THAT(ControlsInGroup(settings, "COM Port:"), ElementsAre(227, 228, 229, 230));
  EXPECT_THAT(TabStops(settings), ElementsAre(219, 224, 227, 235, 1, 2, 9));
  EXPECT_EQ(SendMessageA(GetDlgItem(settings, kModemString), EM_GETLIMITTEXT, 0, 0), 1024);
  session_->ClickInPopup(kCancel);
  EXPECT_TRUE(IsWindowEnabled(session_->dialog()));
}

TEST_F(PagerDialogTest, ShowsTheHelpOfThePortSettings) {
  HelpViewer viewer;
  Add();
  OpenSettings();
  session_->ClickInPopup(kHelp);
  EXPECT_THAT(viewer.requests(), ElementsAre(HelpRequest{"vantrel.hlp", HELP_CONTEXT, 200001}));
}

TEST_F(PagerDialogTest, WritesThePortSettingsOfAlternate2) {
  StoreSetting(L"\\02", L"Settings_Protocol", L"NTT");
  Add();
  PressInList(VK_END);
  OpenSettings();
  EnterSetting(kModemString, "ATZ");
  session_->ClickInPopup(k1200Baud);
  session_->ClickInPopup(kCom3);
  session_->ClickInPopup(k8N1);
  EXPECT_THAT(CheckedSettings(), ElementsAre(k1200Baud, kCom3, k8N1));
  session_->ClickInPopup(kOk);
  EXPECT_EQ(session_->popup(), nullptr);
  EXPECT_THAT(StoredSettings(L"\\02"),
              ElementsAre("Settings_8N1 = 1", "Settings_Baud = 1200", "Settings_COMPort = COM3",
                          "Settings_ModemString = ATZ",
                          // As other programs store it.
                          std::string("Settings_Protocol = NTT") + '\0'));
  OpenSettings();
  EXPECT_EQ(SettingsText(kModemString), "ATZ");
  EXPECT_THAT(CheckedSettings(), ElementsAre(k1200Baud, kCom3, k8N1));
  session_->ClickInPopup(k8N1);
  session_->ClickInPopup(kOk);
  EXPECT_EQ(StoredSettings(L"\\02").front(), "Settings_8N1 = 0");
}

TEST_F(PagerDialogTest, KeepsPortSettingsForWhichItHasNoButton) {
  StoreSetting(L"", L"Settings_COMPort", L"COM7");
  StoreSetting(L"", L"Settings_Baud", L"9600");
  StoreSetting(L"", L"Settings_8N1", L"yes");
  Add();
  OpenSettings();
  EXPECT_THAT(CheckedSettings(), IsEmpty());
  session_->ClickInPopup(kOk);
  EXPECT_THAT(StoredSettings(L""),
              ElementsAre("Settings_8N1 = 0", "Settings_Baud = 9600", "Settings_COMPort = COM7",
                          "Settings_ModemString = ATE0Q0V1X4"));
}

TEST_F(PagerDialogTest, ReadsAgainTheLongestModemStringThatItTakes) {
  Add();
  OpenSettings();
  EnterSetting(kModemString, std::string(1500, 'x'));
  session_->ClickInPopup(kOk);
  OpenSettings();
  EXPECT_EQ(SettingsText(kModemString), std::string(1024, 'x'));
}

TEST_F(PagerDialogTest, WritesNoPortSettingsOnCancel) {
  StoreSetting(L"", L"Settings_Baud", L"1200");
  Add();
  OpenSettings();
  session_->ClickInPopup(k300Baud);
  session_->ClickInPopup(kCancel);
  EXPECT_EQ(DumpTree(HKEY_LOCAL_MACHINE, kPagerSettingsKey), "Settings_Baud = '1200'\n");
}

}  // namespace
}  // namespace brantel
