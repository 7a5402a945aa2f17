#include "beeper/beeper_dialog.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "tests/unit/port/port_settings_fixture.h"

namespace brantel {
namespace {

using ::testing::ElementsAre;
using ::testing::IsEmpty;
using ::testing::Pair;

constexpr int kDialString = 218;
constexpr int kModemString = 219;
constexpr int kTimeout = 220;
constexpr int k1200Baud = 225;
constexpr int kCom3 = 229;

const std::string kKey = "SOFTWARE\\Brantel\\Vantrel\\notification\\Beeper";

class BeeperSettingsDialogTest : public PortSettingsFixture {
 protected:
  BeeperSettingsDialogTest() : PortSettingsFixture(kBeeperDialog, kKey) {}
};

TEST_F(BeeperSettingsDialogTest, IsDialog125WithItsHelp) {
  PortSettingsDialog dialog = Dialog();
  EXPECT_EQ(dialog.template_id(), 125);
  dialog.Press(STANDARD_HELP);
  dialog.Help();
  EXPECT_THAT(view_.events, ElementsAre("help 200000", "help 200000"));
}

TEST_F(BeeperSettingsDialogTest, OpensWithTheDefaultsWhereNothingIsSet) {
  Dialog().Open();
  EXPECT_EQ(view_.title, "Digital Beeper ComPort Settings");
  EXPECT_THAT(view_.texts, ElementsAre(Pair(kDialString, "ATDT%s,,,,%s#"),
                                       Pair(kModemString, "ATE0Q0V1X4"), Pair(kTimeout, "5")));
  EXPECT_THAT(Checked(), ElementsAre(224, 227));
}

TEST_F(BeeperSettingsDialogTest, OpensWithWhatIsSetForTheProfile) {
  store_.keys[kKey + "\\07"] = {{"Settings_COMPort", {SettingType::kText, "COM3"}},
                                {"Settings_Baud", {SettingType::kText, "2400"}},
                                {"Settings_DialString", {SettingType::kText, "ATDP%s"}},
                                {"Settings_ModemString", {SettingType::kText, "ATZ"}},
                                {"Settings_Timeout", {SettingType::kText, "400"}}};
  Dialog(7).Open();
  EXPECT_THAT(view_.texts, ElementsAre(Pair(kDialString, "ATDP%s"), Pair(kModemString, "ATZ"),
                                       Pair(kTimeout, "400")));
  EXPECT_THAT(Checked(), ElementsAre(226, 229));
  EXPECT_THAT(view_.events, IsEmpty());
}

TEST_F(BeeperSettingsDialogTest, ChecksTheButtonsByTheirExactSettings) {
  const std::vector<std::pair<std::string, int>> ports = {
      {"COM1", 227}, {"COM2", 228}, {"COM3", 229}, {"COM4", 230}};
  const std::vector<std::pair<std::string, int>> bauds = {
      {"300", 224}, {"1200", 225}, {"2400", 226}};
  for (const auto& [port, port_button] : ports) {
    for (const auto& [baud, baud_button] : bauds) {
      Store("Settings_COMPort", port);
      Store("Settings_Baud", baud);
      view_.checks.clear();
      Dialog().Open();
      EXPECT_THAT(Checked(), ElementsAre(baud_button, port_button));
    }
  }
}

TEST_F(BeeperSettingsDialogTest, ChecksNoButtonForOtherSettingsAndKeepsThem) {
  for (const auto& [port, baud] :
       std::vector<std::pair<std::string, std::string>>{{"COM5", "9600"},
                                                        {"com1", "0300"},
                                                        {"COM10", "3000"},
                                                        {"COM1:", " 300"},
                                                        {"LPT1", "1"}}) {
    store_.keys.clear();
    Store("Settings_COMPort", port);
    Store("Settings_Baud", baud);
    view_.checks.clear();
    PortSettingsDialog dialog = Dialog();
    dialog.Open();
    EXPECT_THAT(view_.checks, IsEmpty());
    dialog.Press(STANDARD_OK);
    EXPECT_EQ(Stored("Settings_COMPort"), port);
    EXPECT_EQ(Stored("Settings_Baud"), baud);
  }
}

TEST_F(BeeperSettingsDialogTest, TakesTheButtonsThatTheOperatorChecks) {
  Store("Settings_COMPort", "COM9");
  Store("Settings_Baud", "9600");
  PortSettingsDialog dialog = Dialog();
  dialog.Open();
  view_.checks[k1200Baud] = true;
  view_.checks[kCom3] = true;
  dialog.Press(STANDARD_OK);
  EXPECT_EQ(Stored("Settings_COMPort"), "COM3");
  EXPECT_EQ(Stored("Settings_Baud"), "1200");
}

TEST_F(BeeperSettingsDialogTest, WritesAllSettingsOfTheProfileInOrder) {
  PortSettingsDialog dialog = Dialog(2);
  dialog.Open();
  view_.texts = {{kDialString, "ATDP%s"}, {kModemString, "ATZ"}, {kTimeout, ""}};
  store_.calls.clear();
  dialog.Press(STANDARD_OK);
  EXPECT_THAT(store_.calls, ElementsAre("open " + kKey + "\\02", "write Settings_COMPort",
                                        "write Settings_Baud", "write Settings_DialString",
                                        "write Settings_ModemString", "write Settings_Timeout"));
  const std::string key = kKey + "\\02";
  EXPECT_EQ(Stored("Settings_COMPort", key), "COM1");
  EXPECT_EQ(Stored("Settings_Baud", key), "300");
  EXPECT_EQ(Stored("Settings_DialString", key), "ATDP%s");
  EXPECT_EQ(Stored("Settings_ModemString", key), "ATZ");
  EXPECT_EQ(Stored("Settings_Timeout", key), "");
  EXPECT_THAT(view_.events, ElementsAre("close"));
}

TEST_F(BeeperSettingsDialogTest, WritesNoMoreThanCanBeReadAgain) {
  PortSettingsDialog dialog = Dialog();
  dialog.Open();
  EXPECT_THAT(view_.limits, ElementsAre(Pair(kDialString, 1023U), Pair(kModemString, 1023U),
                                        Pair(kTimeout, 1023U)));
  for (const int edit : {kDialString, kModemString, kTimeout}) {
    view_.texts[edit] = std::string(1500, 'x');
  }
  dialog.Press(STANDARD_OK);
  for (const char* name : {"Settings_DialString", "Settings_ModemString", "Settings_Timeout"}) {
    EXPECT_EQ(Stored(name), std::string(1023, 'x')) << name;
  }
}

TEST_F(BeeperSettingsDialogTest, WritesNothingOnCancel) {
  PortSettingsDialog dialog = Dialog();
  dialog.Open();
  view_.texts[kDialString] = "changed";
  store_.calls.clear();
  dialog.Press(STANDARD_CANCEL);
  EXPECT_THAT(view_.events, ElementsAre("close"));
  EXPECT_THAT(store_.calls, IsEmpty());
}

TEST_F(BeeperSettingsDialogTest, StaysOpenAndTellsWhenTheSettingsCannotBeWritten) {
  PortSettingsDialog dialog = Dialog();
  dialog.Open();
  store_.opens = false;
  dialog.Press(STANDARD_OK);
  EXPECT_THAT(view_.events, ElementsAre("message Error saving the port settings"));
  store_.opens = true;
  dialog.Press(STANDARD_OK);
  EXPECT_EQ(Stored("Settings_DialString"), "ATDT%s,,,,%s#");
  EXPECT_EQ(view_.events.back(), "close");
}

}  // namespace
}  // namespace brantel
