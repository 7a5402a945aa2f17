// docs/settings.md names each setting with its default, in the order of the tables.
#include <gtest/gtest.h>

#include <span>
#include <string>
#include <string_view>

#include "beeper/beeper_description.h"
#include "pager/pager_description.h"
#include "smtp_mail/smtp_mail.h"
#include "tests/unit/project_file.h"
#include "text/string_table.h"

namespace brantel {
namespace {

std::string ReadDocument() {
  return ReadProjectFile("docs/settings.md");
}

void ExpectSettings(std::string_view heading, std::span<const SettingRow> rows) {
  const std::string document = ReadDocument();
  std::size_t place = document.find(heading);
  for (const SettingRow& row : rows) {
    const std::string start =
        "\n| `" + std::string(row.name) + "` | `" + std::string(row.default_text) + "` | ";
    place = document.find(start, place);
    EXPECT_NE(place, std::string::npos) << start;
  }
}

TEST(SettingsDocument, ListsTheBeepersSettings) {
  ExpectSettings("## Beeper\n", kBeeper.settings.rows);
}

TEST(SettingsDocument, ListsThePagersSettings) {
  ExpectSettings("## Pager\n", kPager.settings.rows);
}

TEST(SettingsDocument, ListsTheSettingOfMail) {
  const std::string document = ReadDocument();
  const std::string row = "\n| `" + LoadText(text_id::kTimeoutSetting) + "` | `" +
                          std::string(kDefaultMailTimeout) + "` | ";
  EXPECT_NE(document.find(row, document.find("## SMTPMail\n")), std::string::npos) << row;
}

}  // namespace
}  // namespace brantel
