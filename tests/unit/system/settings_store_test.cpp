#include "system/settings_store.h"

#include <gtest/gtest.h>

#include "tests/unit/system/fake_settings_store.h"

namespace brantel {
namespace {

using namespace std::string_literals;

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

}  // namespace
}  // namespace brantel
