#include "framework/settings_store.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <array>

#include "tests/unit/framework/fake_settings_store.h"

namespace brantel {
namespace {

using namespace std::string_literals;
using ::testing::ElementsAre;

constexpr std::array<SettingRow, 3> kRows = {{
    {"Settings_COMPort", "COM1"},
    {"Settings_Baud", "300"},
    {"Settings_Timeout", "5"},
}};

class SettingsStoreTest : public ::testing::Test {
 protected:
  void Put(const std::string& name, SettingType type, const std::string& data) {
    store_.keys["K"][name] = {type, data};
  }
  std::string Read(const std::string& name) {
    return ReadSetting(*store_.Open("K", SettingsAccess::kRead), name);
  }
  StoredSetting Written(std::string_view text, SettingType type) {
    EXPECT_TRUE(WriteSetting(*store_.Open("K", SettingsAccess::kWrite), "V", text, type));
    return store_.keys["K"]["V"];
  }

  FakeSettingsStore store_;
};

TEST(ProfileKeyPath, PutsAProfileOtherThan0IntoASubkeyOfTwoDigits) {
  EXPECT_EQ(ProfileKeyPath("A\\B", 0), "A\\B");
  EXPECT_EQ(ProfileKeyPath("A\\B", 1), "A\\B\\01");
  EXPECT_EQ(ProfileKeyPath("A\\B", 7), "A\\B\\07");
  EXPECT_EQ(ProfileKeyPath("A\\B", 10), "A\\B\\10");
}

TEST_F(SettingsStoreTest, ReadsATextWithAndWithoutItsNul) {
  Put("with", SettingType::kText, "COM3\0"s);
  Put("without", SettingType::kText, "COM3");
  Put("behind", SettingType::kText, "COM3\0junk"s);
  EXPECT_EQ(Read("with"), "COM3");
  EXPECT_EQ(Read("without"), "COM3");
  EXPECT_EQ(Read("behind"), "COM3");
  EXPECT_EQ(Read("missing"), "");
}

TEST_F(SettingsStoreTest, ReadsTheLowestByteOfANumberAsASignedOne) {
  const auto number = [&](const std::string& bytes) {
    Put("n", SettingType::kNumber, bytes);
    return Read("n");
  };
  EXPECT_EQ(number("\x05\0\0\0"s), "5");
  EXPECT_EQ(number("\x2C\x01\0\0"s), "44");  // 300
  EXPECT_EQ(number("\xC8\0\0\0"s), "-56");   // 200
  EXPECT_EQ(number("\x7F\0\0\0"s), "127");
  EXPECT_EQ(number("\xFF\xFF\xFF\xFF"s), "-1");
  EXPECT_EQ(number(""s), "0");
}

TEST_F(SettingsStoreTest, WritesATextWithoutANul) {
  const StoredSetting written = Written("COM2", SettingType::kText);
  EXPECT_EQ(written.type, SettingType::kText);
  EXPECT_EQ(written.data, "COM2");
}

TEST_F(SettingsStoreTest, WritesTheNumberAtTheStartOfATextWhereThatIsAskedFor) {
  const auto bytes = [&](std::string_view text) {
    return Written(text, SettingType::kNumber).data;
  };
  EXPECT_EQ(bytes("5"), "\x05\0\0\0"s);
  EXPECT_EQ(bytes(" 300 ms"), "\x2C\x01\0\0"s);
  EXPECT_EQ(bytes("-1"), "\xFF\xFF\xFF\xFF"s);
  EXPECT_EQ(bytes("x"), "\0\0\0\0"s);
  EXPECT_EQ(bytes(""), "\0\0\0\0"s);
  EXPECT_EQ(bytes("99999999999"), "\xFF\xFF\xFF\x7F"s);
  EXPECT_EQ(bytes("-99999999999"), "\0\0\0\x80"s);
}

TEST_F(SettingsStoreTest, ReadsSettingsInTableOrderAndFillsInDefaults) {
  store_.keys["A\\07"]["Settings_Baud"] = {SettingType::kText, "2400"};
  store_.keys["A\\07"]["Settings_Timeout"] = {SettingType::kText, ""};
  EXPECT_THAT(ReadSettings(store_, "A", 7, kRows), ElementsAre("COM1", "2400", "5"));
  EXPECT_THAT(store_.calls, ElementsAre("open A\\07", "read Settings_COMPort", "read Settings_Baud",
                                        "read Settings_Timeout"));
}

TEST_F(SettingsStoreTest, GivesAllDefaultsWhenTheKeyCannotBeOpened) {
  store_.opens = false;
  EXPECT_THAT(ReadSettings(store_, "A", 0, kRows), ElementsAre("COM1", "300", "5"));
  const std::array<std::string, 3> texts = {"COM2", "1200", "7"};
  EXPECT_FALSE(WriteSettings(store_, "A", 0, kRows, texts));
}

TEST_F(SettingsStoreTest, WritesSettingsInTableOrder) {
  const std::array<std::string, 3> texts = {"COM2", "1200", "7"};
  EXPECT_TRUE(WriteSettings(store_, "A", 0, kRows, texts));
  EXPECT_THAT(store_.calls, ElementsAre("open A", "write Settings_COMPort", "write Settings_Baud",
                                        "write Settings_Timeout"));
  EXPECT_EQ(store_.keys["A"]["Settings_Baud"].data, "1200");
}

}  // namespace
}  // namespace brantel
