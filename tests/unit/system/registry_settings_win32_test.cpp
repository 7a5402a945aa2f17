#include "system/registry_settings_win32.h"

#include <windows.h>
#include <gtest/gtest.h>

#include <string>

#include "system/windows/registry_key_win32.h"

namespace brantel {
namespace {

using namespace std::string_literals;

// A key of its own below the one where the classes have theirs.
constexpr const char* kParent = R"(SOFTWARE\Brantel\Vantrel\notification)";
constexpr const char* kPath = R"(SOFTWARE\Brantel\Vantrel\notification\SettingsTest)";

class RegistrySettingsTest : public ::testing::Test {
 protected:
  void SetUp() override { TearDown(); }
  void TearDown() override { RegDeleteKeyA(HKEY_LOCAL_MACHINE, kPath); }

  static RegistryHandle OpenRaw() {
    RegistryHandle key;
    EXPECT_EQ(RegOpenKeyExA(HKEY_LOCAL_MACHINE, kPath, 0, KEY_ALL_ACCESS, key.put()),
              ERROR_SUCCESS);
    return key;
  }
  static void PutRaw(const char* name, DWORD type, const std::string& data) {
    const std::string guarded = data + '.';  // or the system would add the NUL behind the data
    EXPECT_EQ(RegSetValueExA(OpenRaw().get(), name, 0, type,
                             reinterpret_cast<const BYTE*>(guarded.data()),
                             static_cast<DWORD>(data.size())),
              ERROR_SUCCESS);
  }

  RegistrySettings store_;
};

TEST_F(RegistrySettingsTest, CreatesAMissingKeyAlsoForReading) {
  ASSERT_TRUE(store_.Open(kPath, SettingsAccess::kRead));
  OpenRaw();
}

TEST_F(RegistrySettingsTest, WritesATextWithoutANulAndReadsItBack) {
  const auto key = store_.Open(kPath, SettingsAccess::kWrite);
  ASSERT_TRUE(WriteSetting(*key, "Settings_COMPort", "COM2"));
  DWORD type = 0;
  DWORD size = 0;
  EXPECT_EQ(RegQueryValueExA(OpenRaw().get(), "Settings_COMPort", nullptr, &type, nullptr, &size),
            ERROR_SUCCESS);
  EXPECT_EQ(type, static_cast<DWORD>(REG_SZ));
  EXPECT_EQ(size, 4U);
  EXPECT_EQ(ReadSetting(*key, "Settings_COMPort"), "COM2");
}

TEST_F(RegistrySettingsTest, ReadsWhatOtherToolsWrote) {
  const auto key = store_.Open(kPath, SettingsAccess::kWrite);
  PutRaw("text", REG_SZ, "COM3\0"s);
  PutRaw("number", REG_DWORD, "\x2C\x01\0\0"s);
  PutRaw("binary", REG_BINARY, "abc");
  PutRaw("longest", REG_SZ, std::string(1024, 'x'));
  PutRaw("too long", REG_SZ, std::string(1025, 'x'));
  EXPECT_EQ(ReadSetting(*key, "text"), "COM3");
  EXPECT_EQ(ReadSetting(*key, "number"), "44");
  EXPECT_EQ(ReadSetting(*key, "binary"), "");
  EXPECT_EQ(ReadSetting(*key, "longest"), std::string(1024, 'x'));
  EXPECT_EQ(ReadSetting(*key, "too long"), "");
  EXPECT_EQ(ReadSetting(*key, "missing"), "");
}

TEST_F(RegistrySettingsTest, CannotOpenAKeyWhoseNameIsTooLong) {
  EXPECT_FALSE(
      store_.Open(std::string(kParent) + "\\" + std::string(300, 'x'), SettingsAccess::kRead));
}

}  // namespace
}  // namespace brantel
