#include "pager/pager_dialog.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "tests/unit/port/port_settings_fixture.h"

namespace brantel {
namespace {

using ::testing::ElementsAre;
using ::testing::IsEmpty;
using ::testing::Pair;

constexpr int kModemString = 219;
constexpr int k1200Baud = 225;
constexpr int kCom4 = 230;
constexpr int k8N1 = 235;

const std::string kKey = R"(SOFTWARE\Brantel\Vantrel\notification\Pager)";

class PagerSettingsDialogTest : public PortSettingsFixture {
 protected:
  PagerSettingsDialogTest() : PortSettingsFixture(kPagerDialog, kKey) {}
};

TEST_F(PagerSettingsDialogTest, IsDialog138WithItsHelp) {
  PortSettingsDialog dialog = Dialog();
  EXPECT_EQ(dialog.template_id(), 138);
  dialog.Press(STANDARD_HELP);
  dialog.Help();
  EXPECT_THAT(view_.events, ElementsAre("help 200001", "help 200001"));
}

TEST_F(PagerSettingsDialogTest, OpensWithTheDefaultsWhereNothingIsSet) {
  Dialog().Open();
  EXPECT_EQ(view_.title, "Alpha Pager ComPort Settings");
  EXPECT_THAT(view_.texts, ElementsAre(Pair(kModemString, "ATE0Q0V1X4")));
  EXPECT_THAT(view_.Checked(), ElementsAre(224, 227));
}

TEST_F(PagerSettingsDialogTest, OpensWithWhatIsSetForTheProfile) {
  store_.keys[kKey + "\\02"] = {{"Settings_COMPort", {SettingType::kText, "COM4"}},
                                {"Settings_Baud", {SettingType::kText, "1200"}},
                                {"Settings_ModemString", {SettingType::kText, "ATZ"}},
                                {"Settings_8N1", {SettingType::kText, "1"}}};
  Dialog(2).Open();
  EXPECT_THAT(view_.texts, ElementsAre(Pair(kModemString, "ATZ")));
  EXPECT_THAT(view_.Checked(), ElementsAre(k1200Baud, kCom4, k8N1));
  EXPECT_THAT(view_.events, IsEmpty());
}

TEST_F(PagerSettingsDialogTest, ChecksTheBoxForExactlyOne) {
  for (const char* const text : {"0", "yes", "01", "1 ", "true", ""}) {
    Store("Settings_8N1", text);
    PortSettingsDialog dialog = Dialog();
    dialog.Open();
    EXPECT_FALSE(view_.checks.at(k8N1)) << text;
    dialog.Press(STANDARD_OK);
    EXPECT_EQ(Stored("Settings_8N1"), "0") << text;
  }
}

TEST_F(PagerSettingsDialogTest, WritesTheFourSettingsOfTheProfileInOrder) {
  store_.keys[kKey + "\\02"]["Settings_Protocol"] = {SettingType::kText, "NTT"};
  PortSettingsDialog dialog = Dialog(2);
  dialog.Open();
  view_.texts[kModemString] = "ATZ";
  view_.checks = {{k1200Baud, true}, {kCom4, true}, {k8N1, true}};
  store_.calls.clear();
  dialog.Press(STANDARD_OK);
  EXPECT_THAT(store_.calls,
              ElementsAre("open " + kKey + "\\02", "write Settings_COMPort", "write Settings_Baud",
                          "write Settings_ModemString", "write Settings_8N1"));
  const std::string key = kKey + "\\02";
  EXPECT_EQ(Stored("Settings_COMPort", key), "COM4");
  EXPECT_EQ(Stored("Settings_Baud", key), "1200");
  EXPECT_EQ(Stored("Settings_ModemString", key), "ATZ");
  EXPECT_EQ(Stored("Settings_8N1", key), "1");
  EXPECT_EQ(Stored("Settings_Protocol", key), "NTT");
  EXPECT_THAT(view_.events, ElementsAre("close"));
}

TEST_F(PagerSettingsDialogTest, TakesAModemStringOf1024Characters) {
  PortSettingsDialog dialog = Dialog();
  dialog.Open();
  EXPECT_THAT(view_.limits, ElementsAre(Pair(kModemString, 1024U)));
  view_.texts[kModemString] = std::string(1500, 'x');
  dialog.Press(STANDARD_OK);
  EXPECT_EQ(Stored("Settings_ModemString"), std::string(1024, 'x'));
}

}  // namespace
}  // namespace brantel
