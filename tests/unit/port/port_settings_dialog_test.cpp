// What the settings dialogs of all modem classes do.
#include "port/port_settings_dialog.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <map>
#include <ostream>
#include <string>
#include <utility>
#include <vector>

#include "beeper/beeper_dialog.h"
#include "pager/pager_dialog.h"
#include "tests/unit/port/port_settings_fixture.h"

namespace brantel {
namespace {

using ::testing::ElementsAre;
using ::testing::IsEmpty;

constexpr int k1200Baud = 225;
constexpr int kCom3 = 229;

struct DialogCase {
  const char* name;
  const ModemDialogDescription& dialog;
  std::string key;
  std::map<std::string, std::string> defaults;
  std::map<int, bool> boxes;  // that are no buttons of port or rate, where nothing is set
};

void PrintTo(const DialogCase& dialog_case, std::ostream* stream) {
  *stream << dialog_case.name;
}

class PortSettingsDialogTest : public PortSettingsFixture,
                               public ::testing::WithParamInterface<DialogCase> {
 protected:
  PortSettingsDialogTest() : PortSettingsFixture(GetParam().dialog, GetParam().key) {}
};

INSTANTIATE_TEST_SUITE_P(
    Classes, PortSettingsDialogTest,
    ::testing::Values(DialogCase{.name = "Beeper",
                                 .dialog = kBeeperDialog,
                                 .key = R"(SOFTWARE\Brantel\Vantrel\notification\Beeper)",
                                 .defaults = {{"Settings_COMPort", "COM1"},
                                              {"Settings_Baud", "300"},
                                              {"Settings_DialString", "ATDT%s,,,,%s#"},
                                              {"Settings_ModemString", "ATE0Q0V1X4"},
                                              {"Settings_Timeout", "5"}},
                                 .boxes = {}},
                      DialogCase{.name = "Pager",
                                 .dialog = kPagerDialog,
                                 .key = R"(SOFTWARE\Brantel\Vantrel\notification\Pager)",
                                 .defaults = {{"Settings_COMPort", "COM1"},
                                              {"Settings_Baud", "300"},
                                              {"Settings_ModemString", "ATE0Q0V1X4"},
                                              {"Settings_8N1", "0"}},
                                 .boxes = {{235, false}}}),
    [](const auto& parameter) { return parameter.param.name; });

TEST_P(PortSettingsDialogTest, ChecksTheButtonsByTheirExactSettings) {
  const std::vector<std::pair<std::string, int>> ports = {
      {"COM1", 227}, {"COM2", 228}, {"COM3", 229}, {"COM4", 230}};
  const std::vector<std::pair<std::string, int>> bauds = {
      {"300", 224}, {"1200", 225}, {"2400", 226}};
  for (const auto& [port, port_button] : ports) {
    for (const auto& [baud, baud_button] : bauds) {
      Store("Settings_COMPort", port);
      Store("Settings_Baud", baud);
      view_.checks.clear();
      Dialog().Open();
      EXPECT_THAT(view_.Checked(), ElementsAre(baud_button, port_button));
    }
  }
}

TEST_P(PortSettingsDialogTest, ChecksNoButtonForOtherSettingsAndKeepsThem) {
  for (const auto& [port, baud] :
       std::vector<std::pair<std::string, std::string>>{{"COM5", "9600"},
                                                        {"COM7", "9600"},
                                                        {"com1", "0300"},
                                                        {"COM10", "3000"},
                                                        {"COM1:", " 300"},
                                                        {"LPT1", "1"}}) {
    store_.keys.clear();
    Store("Settings_COMPort", port);
    Store("Settings_Baud", baud);
    view_.checks.clear();
    PortSettingsDialog dialog = Dialog();
    dialog.Open();
    EXPECT_EQ(view_.checks, GetParam().boxes);
    dialog.Press(STANDARD_OK);
    EXPECT_EQ(Stored("Settings_COMPort"), port);
    EXPECT_EQ(Stored("Settings_Baud"), baud);
  }
}

TEST_P(PortSettingsDialogTest, TakesTheButtonsThatTheOperatorChecks) {
  Store("Settings_COMPort", "COM9");
  Store("Settings_Baud", "9600");
  PortSettingsDialog dialog = Dialog();
  dialog.Open();
  view_.checks[k1200Baud] = true;
  view_.checks[kCom3] = true;
  dialog.Press(STANDARD_OK);
  EXPECT_EQ(Stored("Settings_COMPort"), "COM3");
  EXPECT_EQ(Stored("Settings_Baud"), "1200");
}

TEST_P(PortSettingsDialogTest, WritesNothingOnCancel) {
  PortSettingsDialog dialog = Dialog();
  dialog.Open();
  for (auto& [edit, text] : view_.texts) {
    text = "changed";
  }
  store_.calls.clear();
  dialog.Press(STANDARD_CANCEL);
  EXPECT_THAT(view_.events, ElementsAre("close"));
  EXPECT_THAT(store_.calls, IsEmpty());
}

TEST_P(PortSettingsDialogTest, StaysOpenAndTellsWhenTheSettingsCannotBeWritten) {
  PortSettingsDialog dialog = Dialog();
  dialog.Open();
  store_.opens = false;
  dialog.Press(STANDARD_OK);
  EXPECT_THAT(view_.events, ElementsAre("message Error saving the port settings"));
  store_.opens = true;
  dialog.Press(STANDARD_OK);
  for (const auto& [name, text] : GetParam().defaults) {
    EXPECT_EQ(Stored(name), text) << name;
  }
  EXPECT_EQ(view_.events.back(), "close");
}

}  // namespace
}  // namespace brantel
