#include "pager/pager_dialog.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "instance/instance_codec.h"
#include "pager/pager_description.h"
#include "tests/unit/port/modem_dialog_fixture.h"

namespace brantel {
namespace {

using ::testing::_;
using ::testing::Each;
using ::testing::ElementsAre;
using ::testing::IsEmpty;
using ::testing::Optional;
using ::testing::Pair;

constexpr int kName = 222;
constexpr int kPagerNumber = 218;
constexpr int kPassword = 219;
constexpr int kPagerId = 220;
constexpr int kMessage = 221;
constexpr int kProfiles = 251;
constexpr int kPortSettings = 234;
constexpr int kTap = 231;
constexpr int kSmsTap = 232;
constexpr int kNtt = 233;
constexpr int kUcpSms = 235;

// Controls of the port settings.
constexpr int kModemStringOfPort = 219;

std::string FileOf(const std::string& protocol, std::int32_t profile = 0) {
  Instance instance(6);
  instance.set_text(pager_field::kPagerNumber, "5550200");
  instance.set_text(pager_field::kTerminalPassword, "secret");
  instance.set_text(pager_field::kPagerId, "0041 79");
  instance.set_text(pager_field::kMessage, "%n is down");
  instance.set_text(pager_field::kProtocol, protocol);
  instance.set_integer(pager_field::kSettingsProfile, profile);
  return EncodeInstance(kPager.instances, instance);
}

class PagerDialogTest : public ModemDialogFixture {
 protected:
  PagerDialogTest()
      : ModemDialogFixture({kProfiles, kPortSettings, 138},
                           R"(SOFTWARE\Brantel\Vantrel\notification\Pager)") {}

  std::unique_ptr<InstanceDialog> Make(InstanceDialogCall call) override {
    return std::make_unique<ModemInstanceDialog>(kPagerDialog, view_, files_, std::move(call),
                                                 settings_);
  }

  // What an operator does in the group of radio buttons.
  void Check(InstanceDialog& dialog, int button) {
    view_.checks.clear();
    view_.checks[button] = true;
    dialog.Press(button);
  }
};

TEST_F(PagerDialogTest, IsDialog137WithItsHelp) {
  ExpectDialog(137, 0, STANDARD_HELP, "help 131196");
}

TEST_F(PagerDialogTest, AddsFromTheTextsOfTheDefaultInstanceAndWithTap) {
  files_.files["dir\\Default"] = FileOf("UCP-SMS", 1);
  InstanceDialog& dialog = Add();
  dialog.Open();
  EXPECT_EQ(view_.title, "Add Pager Instance");
  EXPECT_THAT(view_.texts, ElementsAre(Pair(kPagerNumber, "5550200"), Pair(kPassword, "secret"),
                                       Pair(kPagerId, "0041 79"), Pair(kMessage, "%n is down")));
  EXPECT_THAT(view_.Checked(), ElementsAre(kTap));
  EXPECT_THAT(view_.selections[kProfiles], Optional(1U));
  EXPECT_THAT(host_.log, IsEmpty());
  EXPECT_THAT(settings_.calls, IsEmpty());
  view_.texts[kName] = "night";
  ExpectSaved(dialog, FileOf("TAP", 1));
  EXPECT_EQ(dialog.saved_name(), "night");
}

TEST_F(PagerDialogTest, StaysEmptyAndLogsWithoutADefaultInstance) {
  ExpectMissingDefaultOnlyLogged("Add Pager Instance", "Default Beeper");
  EXPECT_THAT(view_.texts, Each(Pair(_, "")));
  EXPECT_THAT(view_.Checked(), ElementsAre(kTap));
  EXPECT_THAT(view_.selections[kProfiles], Optional(0U));
}

TEST_F(PagerDialogTest, OffersThreeProfiles) {
  Add().Open();
  EXPECT_THAT(view_.lists,
              ElementsAre(Pair(kProfiles, ElementsAre("Primary", "Alternate 1", "Alternate 2"))));
}

TEST_F(PagerDialogTest, EditsTheNamedInstanceWithItsProtocolAndProfile) {
  const std::vector<std::pair<std::string, int>> protocols = {
      {"TAP", kTap}, {"SMS-TAP", kSmsTap}, {"NTT", kNtt}, {"UCP-SMS", kUcpSms}};
  for (const auto& [protocol, button] : protocols) {
    for (const std::int32_t profile : {0, 1, 2}) {
      files_.files["dir\\night"] = FileOf(protocol, profile);
      InstanceDialog& dialog = Edit("night");
      dialog.Open();
      EXPECT_EQ(view_.title, "Edit Pager Instance");
      EXPECT_THAT(view_.texts, ElementsAre(Pair(kPagerNumber, "5550200"), Pair(kPassword, "secret"),
                                           Pair(kPagerId, "0041 79"), Pair(kMessage, "%n is down"),
                                           Pair(kName, "night")));
      EXPECT_THAT(view_.Checked(), ElementsAre(button));
      EXPECT_THAT(view_.selections[kProfiles], Optional(static_cast<std::size_t>(profile)));
      ExpectSaved(dialog, FileOf(protocol, profile));
    }
  }
}

TEST_F(PagerDialogTest, TakesAProtocolThatItDoesNotKnowForTap) {
  for (const std::string protocol : {"tap", "", "TAP ", "SMS", "ucp-sms"}) {
    files_.files["dir\\night"] = FileOf(protocol);
    InstanceDialog& dialog = Edit("night");
    dialog.Open();
    EXPECT_THAT(view_.Checked(), ElementsAre(kTap)) << protocol;
    ExpectSaved(dialog, FileOf("TAP"));
  }
}

TEST_F(PagerDialogTest, SavesTheProtocolThatTheOperatorChecks) {
  const std::vector<std::pair<std::string, int>> protocols = {
      {"NTT", kNtt}, {"UCP-SMS", kUcpSms}, {"SMS-TAP", kSmsTap}, {"TAP", kTap}};
  for (const auto& [protocol, button] : protocols) {
    files_.files["dir\\night"] = FileOf("SMS-TAP");
    InstanceDialog& dialog = Edit("night");
    dialog.Open();
    EXPECT_FALSE(dialog.modified());
    Check(dialog, button);
    EXPECT_TRUE(dialog.modified());
    ExpectSaved(dialog, FileOf(protocol));
  }
}

TEST_F(PagerDialogTest, LeavesTheProtocolWhereNoneIsChecked) {
  files_.files["dir\\night"] = FileOf("tap");
  InstanceDialog& dialog = Edit("night");
  dialog.Open();
  view_.checks.clear();
  ExpectSaved(dialog, FileOf("tap"));
}

TEST_F(PagerDialogTest, TellsAndLogsWhenTheInstanceCannotBeLoaded) {
  ExpectLoadFailureTold("Edit Pager Instance");
  EXPECT_THAT(view_.texts, IsEmpty());
  EXPECT_THAT(view_.Checked(), ElementsAre(kTap));
  EXPECT_THAT(view_.selections[kProfiles], Optional(0U));
}

TEST_F(PagerDialogTest, KeepsAProfileThatItDoesNotOffer) {
  files_.files["dir\\night"] = FileOf("NTT", 5);
  InstanceDialog& dialog = Edit("night");
  dialog.Open();
  EXPECT_EQ(view_.selections[kProfiles], std::nullopt);
  ExpectSaved(dialog, FileOf("NTT", 5));
}

TEST_F(PagerDialogTest, WantsANameAndANumberAndNothingElse) {
  InstanceDialog& dialog = Add();
  dialog.Open();
  EXPECT_THAT(PressOk(dialog),
              ElementsAre("message Invalid value - The 'Display Name' field must have a value",
                          "focus 222"));
  view_.texts[kName] = "night";
  EXPECT_THAT(PressOk(dialog),
              ElementsAre("message Invalid value - The 'Pager Number' field must have a value.",
                          "focus 218"));
  EXPECT_THAT(files_.files, IsEmpty());
  view_.texts[kPagerNumber] = "1";
  EXPECT_THAT(PressOk(dialog), ElementsAre("close"));
}

TEST_F(PagerDialogTest, RefusesANameThatIsTakenBeforeItLooksAtTheNumber) {
  files_.files["dir\\night"] = FileOf("TAP");
  InstanceDialog& dialog = Add();
  dialog.Open();
  view_.texts[kName] = "night";
  dialog.Press(STANDARD_OK);
  EXPECT_THAT(view_.events, ElementsAre(kNameTaken, "focus 222"));
}

TEST_F(PagerDialogTest, OpensThePortSettingsOfTheSelectedProfile) {
  for (const auto& [subkey, text] : {std::pair("", "AT0"), {"\\02", "AT2"}, {"\\05", "AT5"}}) {
    Store(subkey, "Settings_ModemString", text);
  }
  files_.files["dir\\night"] = FileOf("TAP", 5);
  InstanceDialog& dialog = Edit("night");
  dialog.Open();
  EXPECT_EQ(InPortSettings(dialog, kModemStringOfPort), "AT5");
  Choose(dialog, 2);
  EXPECT_EQ(InPortSettings(dialog, kModemStringOfPort), "AT2");
  Choose(dialog, 0);
  EXPECT_EQ(InPortSettings(dialog, kModemStringOfPort), "AT0");
}

TEST_F(PagerDialogTest, SavesPortSettingsApartFromTheInstance) {
  files_.files["dir\\night"] = FileOf("TAP", 2);
  InstanceDialog& dialog = Edit("night");
  dialog.Open();
  SaveInPortSettings(dialog, kModemStringOfPort, "ATZ");
  dialog.Press(STANDARD_CANCEL);
  EXPECT_EQ(Stored("\\02", "Settings_ModemString"), "ATZ");
  EXPECT_EQ(files_.files["dir\\night"], FileOf("TAP", 2));
}

TEST_F(PagerDialogTest, WritesNoSettings) {
  files_.files["dir\\night"] = FileOf("TAP");
  InstanceDialog& dialog = Edit("night");
  dialog.Open();
  Choose(dialog, 2);
  ExpectSaved(dialog, FileOf("TAP", 2));
  ExpectNoSettingsWritten();
}

}  // namespace
}  // namespace brantel
