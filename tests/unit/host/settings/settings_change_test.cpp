#include "host/settings/settings_change.h"

#include <gtest/gtest.h>

#include <functional>
#include <string>
#include <vector>

#include "host/outcome/command_failure.h"
#include "tests/unit/system/fake_settings_store.h"

namespace brantel::host {
namespace {

std::optional<std::string> EncodeAscii(std::string_view text) {
  for (const char c : text) {
    if (static_cast<unsigned char>(c) > 0x7F) return std::nullopt;
  }
  return std::string(text);
}

std::string DecodeAscii(std::string_view text) {
  return std::string(text);
}

std::string SettingsRefusal(const std::function<void()>& action) {
  try {
    action();
  } catch (const CommandFailure& failure) {
    EXPECT_EQ(failure.exit_code(), ExitCode::kWrongUsage);
    return failure.what();
  }
  return "none";
}

const ClassDescription& PagerClass() {
  return FindClassWithSettings("pager", 10);
}

std::vector<SettingChange> ChangesOf(const std::vector<FieldValue>& values) {
  return SettingChanges(PagerClass(), values, EncodeAscii);
}

std::string ReadRefusal(const std::string& text) {
  return SettingsRefusal([&] { ReadExport(PagerClass(), text); });
}

constexpr const char* kFormHint = "; notifyhost settings export prints files of the right form";

TEST(FindClassWithSettings, RefusesWhatHasNone) {
  EXPECT_EQ(SettingsRefusal([] { FindClassWithSettings("Sound", 0); }),
            "CLASS: Sound has no settings; those that have are SMTPMail, Beeper and Pager");
  EXPECT_EQ(SettingsRefusal([] { FindClassWithSettings("smtpmail", 1); }),
            "--profile: SMTPMail has no profiles");
  EXPECT_EQ(FindClassWithSettings("SMTPMail", 0).instances.class_name, "SMTPMail");
}

TEST(FindSetting, TakesNamesInAnySpelling) {
  for (const char* name : {"Settings_Baud", "SETTINGS_BAUD", "baud", "Baud"})
    EXPECT_EQ(FindSetting(PagerClass(), name).name, "Settings_Baud") << name;
  EXPECT_EQ(SettingsRefusal([] { FindSetting(PagerClass(), "Settings_COMPrt"); }),
            "'Settings_COMPrt' is not a setting of Pager; did you mean 'Settings_COMPort'?");
  EXPECT_EQ(SettingsRefusal([] { FindSetting(PagerClass(), "x"); }),
            "'x' is not a setting of Pager; the settings are Settings_COMPort, Settings_Baud, "
            "Settings_ModemString and Settings_8N1");
}

TEST(SettingChanges, AreTheValuesOfTheSettings) {
  const auto changes = ChangesOf({{"baud", "9600"}, {"8n1", ""}});
  ASSERT_EQ(changes.size(), 2U);
  EXPECT_EQ(changes[0].guide->name, "Settings_Baud");
  EXPECT_EQ(changes[0].text, "9600");
  FakeSettingsStore store;
  const auto settings = Changed(ReadProfile(store, PagerClass(), 0), changes);
  EXPECT_EQ(settings[1].text, "9600");
  EXPECT_EQ(settings[1].origin, SettingOrigin::kText);
  EXPECT_EQ(settings[3].text, "0");
  EXPECT_EQ(settings[3].origin, SettingOrigin::kDefault);
}

TEST(SettingChanges, RefuseWhatCannotBeStored) {
  EXPECT_EQ(SettingsRefusal([] {
              ChangesOf({{"baud", "1"}, {"Settings_Baud", "2"}});
            }),
            "Settings_Baud is given more than once");
  EXPECT_EQ(SettingsRefusal([] {
              ChangesOf({{"baud", "☎"}});
            }),
            "Settings_Baud: the text has characters that the system's code page lacks");
  const std::string fault =
      "Settings_ModemString: the text is longer than 1023 bytes, or has a NUL, so that it could "
      "not be read";
  EXPECT_EQ(ChangesOf({{"ModemString", std::string(1023, 'x')}}).size(), 1U);
  EXPECT_EQ(SettingsRefusal([] { ChangesOf({{"ModemString", std::string(1024, 'x')}}); }), fault);
  EXPECT_EQ(SettingsRefusal([] { ChangesOf({{"ModemString", std::string("a\0b", 3)}}); }), fault);
}

TEST(Export, IsReadAgain) {
  FakeSettingsStore store;
  auto& key = store.keys[SettingsPath(PagerClass(), 2)];
  key["Settings_COMPort"] = {SettingType::kText, "COM7"};
  key["Settings_ModemString"] = {SettingType::kText, "AT\"\\"};
  const std::string text =
      ExportText(PagerClass(), ReadProfile(store, PagerClass(), 2), DecodeAscii);
  EXPECT_EQ(text,
            "{\n"
            "  \"class\": \"Pager\",\n"
            "  \"settings\": {\n"
            "    \"Settings_COMPort\": \"COM7\",\n"
            "    \"Settings_ModemString\": \"AT\\\"\\\\\"\n"
            "  }\n"
            "}\n");
  EXPECT_EQ(
      ReadExport(PagerClass(), text),
      (std::vector<FieldValue>{{"Settings_COMPort", "COM7"}, {"Settings_ModemString", "AT\"\\"}}));
}

TEST(Export, OfNothingIsEmpty) {
  FakeSettingsStore store;
  const std::string text =
      ExportText(PagerClass(), ReadProfile(store, PagerClass(), 0), DecodeAscii);
  EXPECT_TRUE(ReadExport(PagerClass(), text).empty());
}

TEST(Export, OfAnotherFormIsRefused) {
  for (const char* text : {"", "notes", "[]", "7", "{\"class\": ", "\xFF\xFE{"})
    EXPECT_EQ(ReadRefusal(text), std::string("FILE: is no JSON object") + kFormHint) << text;
  for (const char* text : {"{}", R"({"class": 7})", R"({"class": "Beeper", "settings": {}})"})
    EXPECT_EQ(ReadRefusal(text), std::string("FILE: is not of Pager") + kFormHint) << text;
  for (const char* text : {R"({"class": "Pager"})", R"({"class": "Pager", "settings": []})"})
    EXPECT_EQ(ReadRefusal(text), std::string("FILE: has no settings") + kFormHint) << text;
  EXPECT_EQ(ReadRefusal(R"({"class": "Pager", "settings": {"Settings_Baud": 9600}})"),
            std::string("FILE: has something else than a text for Settings_Baud") + kFormHint);
}

}  // namespace
}  // namespace brantel::host
