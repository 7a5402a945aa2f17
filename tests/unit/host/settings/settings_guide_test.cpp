#include "host/settings/settings_guide.h"

#include <gtest/gtest.h>

#include <string>

#include "host/instances/field_guide.h"
#include "module/class_descriptions.h"
#include "smtp_mail/smtp_mail.h"
#include "tests/unit/system/fake_settings_store.h"
#include "text/string_table.h"

namespace brantel::host {
namespace {

TEST(SettingsGuide, IsOfTheSettingsThatTheClassesRead) {
  for (const ClassDescription* notifier_class : ClassDescriptions()) {
    const auto guides = SettingsOf(*notifier_class);
    const auto& rows = notifier_class->settings.rows;
    if (rows.empty()) continue;
    ASSERT_EQ(guides.size(), rows.size());
    for (std::size_t i = 0; i < rows.size(); ++i) {
      EXPECT_EQ(guides[i].name, rows[i].name);
      EXPECT_EQ(guides[i].default_text, rows[i].default_text);
    }
    EXPECT_EQ(SettingsPath(*notifier_class, 0), LoadText(notifier_class->settings.key_text_id));
    EXPECT_EQ(SettingsPath(*notifier_class, 7),
              LoadText(notifier_class->settings.key_text_id) + "\\07");
  }
  const auto mail = SettingsOf(*FindClassDescription("SMTPMail"));
  ASSERT_EQ(mail.size(), 1U);
  EXPECT_EQ(mail[0].name, LoadText(text_id::kTimeoutSetting));
  EXPECT_EQ(mail[0].default_text, kDefaultMailTimeout);
  EXPECT_EQ(SettingsPath(*FindClassDescription("SMTPMail"), 0), LoadText(text_id::kSmtpMailKey));
  EXPECT_TRUE(SettingsOf(*FindClassDescription("Sound")).empty());
}

TEST(SettingsGuide, TellsWhereASettingComesFrom) {
  const ClassDescription& beeper = *FindClassDescription("Beeper");
  FakeSettingsStore store;
  auto& key = store.keys[SettingsPath(beeper, 3)];
  key["Settings_COMPort"] = {SettingType::kText, "COM7"};
  key["Settings_Baud"] = {SettingType::kNumber, std::string("\x2C\x01\0\0", 4)};
  key["Settings_ModemString"] = {SettingType::kText, ""};
  const auto settings = ReadProfile(store, beeper, 3);
  ASSERT_EQ(settings.size(), 5U);
  EXPECT_EQ(settings[0].text, "COM7");
  EXPECT_EQ(settings[0].origin, SettingOrigin::kText);
  EXPECT_EQ(settings[1].text, "44");
  EXPECT_EQ(settings[1].origin, SettingOrigin::kNumber);
  EXPECT_EQ(settings[2].text, "ATDT%s,,,,%s#");
  EXPECT_EQ(settings[3].text, "ATE0Q0V1X4");
  EXPECT_EQ(settings[3].origin, SettingOrigin::kDefault);
}

TEST(SettingsGuide, TakesDefaultsWhereThereIsNoKey) {
  FakeSettingsStore store;
  store.opens = false;
  for (const ProfileSetting& setting : ReadProfile(store, *FindClassDescription("Pager"), 0)) {
    EXPECT_EQ(setting.text, setting.guide->default_text);
    EXPECT_EQ(setting.origin, SettingOrigin::kDefault);
  }
}

TEST(FieldGuides, AreOfEveryField) {
  for (const ClassDescription* notifier_class : ClassDescriptions()) {
    for (std::size_t i = 0; i < notifier_class->instances.fields.size(); ++i) {
      const FieldGuide& guide = GuideOf(*notifier_class, i);
      EXPECT_EQ(guide.notifier_class, notifier_class);
      EXPECT_EQ(guide.field, i);
      EXPECT_FALSE(guide.meaning.empty() || guide.values.empty() || guide.standard.empty());
    }
  }
}

TEST(FieldGuides, KnowTheProtocols) {
  const auto names = PagerProtocolNames();
  ASSERT_EQ(names.size(), 4U);
  for (unsigned i = 0; i < 4; ++i)
    EXPECT_EQ(names[i], LoadText(text_id::kFirstProtocol + i));
}

}  // namespace
}  // namespace brantel::host
