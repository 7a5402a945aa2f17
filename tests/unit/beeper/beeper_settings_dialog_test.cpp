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

const std::string kKey = R"(SOFTWARE\Brantel\Vantrel\notification\Beeper)";

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
  EXPECT_THAT(view_.Checked(), ElementsAre(224, 227));
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
  EXPECT_THAT(view_.Checked(), ElementsAre(226, 229));
  EXPECT_THAT(view_.events, IsEmpty());
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

}  // namespace
}  // namespace brantel
