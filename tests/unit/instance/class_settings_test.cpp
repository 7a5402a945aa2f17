#include "instance/class_settings.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <array>
#include <string>

#include "tests/unit/system/fake_settings_store.h"
#include "text/string_table.h"

namespace brantel {
namespace {

using ::testing::ElementsAre;

constexpr auto kRows = SettingsInOrder<3>({
    {0, "Settings_COMPort", "COM1"},
    {1, "Settings_Baud", "300"},
    {2, "Settings_Timeout", "5"},
});
constexpr SettingsDescription kSettings = {text_id::kBeeperSettingsKey, kRows};
const std::string kKey = R"(SOFTWARE\Brantel\Vantrel\notification\Beeper)";

class ClassSettingsTest : public ::testing::Test {
 protected:
  FakeSettingsStore store_;
};

TEST_F(ClassSettingsTest, ReadsSettingsInTableOrderAndFillsInDefaults) {
  store_.keys[kKey + "\\07"]["Settings_Baud"] = {SettingType::kText, "2400"};
  store_.keys[kKey + "\\07"]["Settings_Timeout"] = {SettingType::kText, ""};
  EXPECT_THAT(ReadSettings(store_, kSettings, 7), ElementsAre("COM1", "2400", "5"));
  EXPECT_THAT(store_.calls, ElementsAre("open " + kKey + "\\07", "read Settings_COMPort",
                                        "read Settings_Baud", "read Settings_Timeout"));
}

TEST_F(ClassSettingsTest, GivesAllDefaultsWhenTheKeyCannotBeOpened) {
  store_.opens = false;
  EXPECT_THAT(ReadSettings(store_, kSettings, 0), ElementsAre("COM1", "300", "5"));
  const std::array<std::string, 3> texts = {"COM2", "1200", "7"};
  EXPECT_FALSE(WriteSettings(store_, kSettings, 0, texts));
}

TEST_F(ClassSettingsTest, WritesSettingsInTableOrder) {
  const std::array<std::string, 3> texts = {"COM2", "1200", "7"};
  EXPECT_TRUE(WriteSettings(store_, kSettings, 0, texts));
  EXPECT_THAT(store_.calls, ElementsAre("open " + kKey, "write Settings_COMPort",
                                        "write Settings_Baud", "write Settings_Timeout"));
  EXPECT_EQ(store_.keys[kKey]["Settings_Baud"].data, "1200");
}

}  // namespace
}  // namespace brantel
