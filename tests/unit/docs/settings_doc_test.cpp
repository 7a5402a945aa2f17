// docs/settings.md names each setting with its default, in the order of the tables.
#include <gtest/gtest.h>

#include <fstream>
#include <iterator>
#include <string>

#include "modem/beeper_settings.h"

namespace brantel {
namespace {

TEST(SettingsDocument, ListsTheBeepersSettings) {
  std::ifstream stream(PROJECT_DIR "/docs/settings.md");
  const std::string document(std::istreambuf_iterator<char>(stream), {});
  std::size_t place = document.find("## Beeper\n");
  for (const SettingRow& row : kBeeperSettings) {
    const std::string start =
        "\n| `" + std::string(row.name) + "` | `" + std::string(row.default_text) + "` | ";
    place = document.find(start, place);
    EXPECT_NE(place, std::string::npos) << start;
  }
}

}  // namespace
}  // namespace brantel
