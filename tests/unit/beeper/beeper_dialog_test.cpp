#include "beeper/beeper_dialog.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "beeper/beeper_description.h"
#include "instance/instance_codec.h"
#include "tests/unit/port/modem_dialog_fixture.h"

namespace brantel {
namespace {

using ::testing::_;
using ::testing::Each;
using ::testing::ElementsAre;
using ::testing::IsEmpty;
using ::testing::Optional;
using ::testing::Pair;

constexpr int kName = 223;
constexpr int kBeeperNumber = 218;
constexpr int kDialingOptions = 219;
constexpr int kUpCode = 220;
constexpr int kDownCode = 221;
constexpr int kTrapCode = 222;
constexpr int kPortSettings = 228;
constexpr int kProfiles = 251;

// The dial string in the dialog of the port settings.
constexpr int kDialStringOfPort = 218;

std::string FileOf(std::int32_t profile, const std::string& options = "stored") {
  Instance instance(7);
  instance.set_text(beeper_field::kBeeperNumber, "5551234");
  instance.set_text(beeper_field::kDialingOptions, options);
  instance.set_text(beeper_field::kUpCode, "11");
  instance.set_text(beeper_field::kDownCode, "22");
  instance.set_text(beeper_field::kTrapCode, "33");
  instance.set_text(beeper_field::kReportMessage, "report");
  instance.set_integer(beeper_field::kSettingsProfile, profile);
  return EncodeInstance(kBeeper.instances, instance);
}

class BeeperDialogTest : public ModemDialogFixture {
 protected:
  BeeperDialogTest()
      : ModemDialogFixture({kProfiles, kPortSettings, 125},
                           R"(SOFTWARE\Brantel\Vantrel\notification\Beeper)") {
    StoreDialString("", "ATDT0");
    StoreDialString("\\01", "ATDT1");
    StoreDialString("\\05", "ATDT5");
  }

  std::unique_ptr<InstanceDialog> Make(InstanceDialogCall call) override {
    return std::make_unique<BeeperDialog>(view_, files_, std::move(call), settings_);
  }

  void StoreDialString(const std::string& subkey, const std::string& text) {
    Store(subkey, "Settings_DialString", text);
  }
};

TEST_F(BeeperDialogTest, IsDialog120WithItsHelp) {
  ExpectDialog(120, 0, STANDARD_HELP, "help 131197");
}

TEST_F(BeeperDialogTest, AddsFromTheDefaultInstanceWithTheProfilesDialString) {
  files_.files["dir\\Default"] = FileOf(0);
  Add().Open();
  EXPECT_EQ(view_.title, "Add Beeper  Instance");
  EXPECT_EQ(view_.texts[kName], "");
  EXPECT_EQ(view_.texts[kBeeperNumber], "5551234");
  EXPECT_EQ(view_.texts[kDialingOptions], "ATDT0");
  EXPECT_EQ(view_.texts[kUpCode], "11");
  EXPECT_EQ(view_.texts[kDownCode], "22");
  EXPECT_EQ(view_.texts[kTrapCode], "33");
  EXPECT_THAT(view_.selections[kProfiles], Optional(0U));
  EXPECT_THAT(host_.log, IsEmpty());
}

TEST_F(BeeperDialogTest, LeavesAllButTheDialStringEmptyWithoutADefaultInstance) {
  ExpectMissingDefaultOnlyLogged("Add Beeper  Instance", "Default Beeper");
  EXPECT_EQ(view_.texts.extract(kDialingOptions).mapped(), "ATDT0");
  EXPECT_THAT(view_.texts, Each(Pair(_, "")));
  EXPECT_THAT(view_.selections[kProfiles], Optional(0U));
}

TEST_F(BeeperDialogTest, OffersTheUsualDialStringWhereNoneIsSet) {
  settings_.keys.clear();
  Add().Open();
  EXPECT_EQ(view_.texts[kDialingOptions], "ATDT%s,,,,%s#");
}

TEST_F(BeeperDialogTest, AddsWithTheProfileOfTheDefaultInstanceAndItsDialString) {
  files_.files["dir\\Default"] = FileOf(1);
  InstanceDialog& dialog = Add();
  dialog.Open();
  EXPECT_THAT(view_.selections[kProfiles], Optional(1U));
  EXPECT_EQ(view_.texts[kDialingOptions], "ATDT1");
  view_.texts[kName] = "night";
  ExpectSaved(dialog, FileOf(1, "ATDT1"));
}

TEST_F(BeeperDialogTest, OffersThreeProfiles) {
  Add().Open();
  EXPECT_THAT(view_.lists,
              ElementsAre(Pair(kProfiles, ElementsAre("Primary", "Alternate 1", "Alternate 2"))));
}

TEST_F(BeeperDialogTest, EditsTheNamedInstanceWithTheDialStringOfItsProfile) {
  const std::vector<std::string> dial_strings = {"ATDT0", "ATDT1", "ATDT%s,,,,%s#"};
  for (const std::int32_t profile : {0, 1, 2}) {
    const std::string& dial_string = dial_strings.at(static_cast<std::size_t>(profile));
    files_.files["dir\\night"] = FileOf(profile);
    InstanceDialog& dialog = Edit("night");
    dialog.Open();
    EXPECT_EQ(view_.title, "Edit Beeper Instance");
    EXPECT_EQ(view_.texts[kName], "night");
    EXPECT_EQ(view_.texts[kBeeperNumber], "5551234");
    EXPECT_EQ(view_.texts[kDialingOptions], dial_string);
    EXPECT_EQ(view_.texts[kTrapCode], "33");
    EXPECT_THAT(view_.selections[kProfiles], Optional(static_cast<std::size_t>(profile)));
    ExpectSaved(dialog, FileOf(profile, dial_string));
  }
}

TEST_F(BeeperDialogTest, StaysEmptyButForTheDialStringWhenTheInstanceCannotBeLoaded) {
  ExpectLoadFailureTold("Edit Beeper Instance");
  EXPECT_THAT(view_.texts, ElementsAre(Pair(kDialingOptions, "ATDT0")));
  EXPECT_THAT(view_.selections[kProfiles], Optional(0U));
}

TEST_F(BeeperDialogTest, ShowsTheDialStringOfAnotherProfileThatIsSelected) {
  files_.files["dir\\night"] = FileOf(0);
  InstanceDialog& dialog = Edit("night");
  dialog.Open();
  Choose(dialog, 1);
  EXPECT_EQ(view_.texts[kDialingOptions], "ATDT1");
  Choose(dialog, 2);
  EXPECT_EQ(view_.texts[kDialingOptions], "ATDT%s,,,,%s#");
  Choose(dialog, 0);
  EXPECT_EQ(view_.texts[kDialingOptions], "ATDT0");
  Choose(dialog, 1);
  ExpectSaved(dialog, FileOf(1, "ATDT1"));
}

TEST_F(BeeperDialogTest, KeepsWhatIsEnteredWhenTheSameProfileIsSelectedAgain) {
  InstanceDialog& dialog = Add();
  dialog.Open();
  view_.texts[kDialingOptions] = "typed";
  Choose(dialog, 0);
  EXPECT_EQ(view_.texts[kDialingOptions], "typed");
}

TEST_F(BeeperDialogTest, KeepsAProfileThatItDoesNotOffer) {
  StoreDialString("\\03", "ATDT3");
  StoreDialString("\\10", "ATDT10");
  for (const std::int32_t profile : {3, 5, 10}) {
    const std::string dial_string = "ATDT" + std::to_string(profile);
    files_.files["dir\\night"] = FileOf(profile);
    InstanceDialog& dialog = Edit("night");
    dialog.Open();
    EXPECT_EQ(view_.selections[kProfiles], std::nullopt);
    EXPECT_EQ(view_.texts[kDialingOptions], dial_string);
    ExpectSaved(dialog, FileOf(profile, dial_string));
  }
}

TEST_F(BeeperDialogTest, ReplacesAProfileThatItDoesNotOfferByTheSelectedOne) {
  files_.files["dir\\night"] = FileOf(5);
  InstanceDialog& dialog = Edit("night");
  dialog.Open();
  Choose(dialog, 0);
  EXPECT_EQ(view_.texts[kDialingOptions], "ATDT0");
  ExpectSaved(dialog, FileOf(0, "ATDT0"));
}

TEST_F(BeeperDialogTest, OpensThePortSettingsOfTheSelectedProfile) {
  files_.files["dir\\night"] = FileOf(5);
  InstanceDialog& dialog = Edit("night");
  dialog.Open();
  EXPECT_EQ(InPortSettings(dialog, kDialStringOfPort), "ATDT5");
  Choose(dialog, 1);
  EXPECT_EQ(InPortSettings(dialog, kDialStringOfPort), "ATDT1");
  Choose(dialog, 0);
  EXPECT_EQ(InPortSettings(dialog, kDialStringOfPort), "ATDT0");
}

TEST_F(BeeperDialogTest, SavesPortSettingsApartFromTheInstance) {
  files_.files["dir\\night"] = FileOf(1);
  InstanceDialog& dialog = Edit("night");
  dialog.Open();
  SaveInPortSettings(dialog, kDialStringOfPort, "ATDP");
  EXPECT_EQ(Stored("\\01", "Settings_DialString"), "ATDP");
  EXPECT_EQ(view_.texts[kDialingOptions], "ATDT1");
  dialog.Press(STANDARD_CANCEL);
  EXPECT_EQ(Stored("\\01", "Settings_DialString"), "ATDP");
  EXPECT_EQ(files_.files["dir\\night"], FileOf(1));
}

TEST_F(BeeperDialogTest, WantsItsFieldsInOrder) {
  InstanceDialog& dialog = Add();
  dialog.Open();
  view_.texts[kDialingOptions] = "";
  struct Field {
    int control;
    std::string message;
  };
  for (const auto& [control, message] :
       {Field{kName, kNameMissing},
        Field{kBeeperNumber,
              "message Invalid value - The 'Beeper Number' field must have a value."},
        Field{kDialingOptions,
              "message Invalid value - The 'Dialing Options' field must have a value."},
        Field{kUpCode, "message Invalid value - The 'Up Code' field must have a value."},
        Field{kDownCode, "message Invalid value - The 'Down Code' field must have a value."},
        Field{kTrapCode,
              "message Invalid value - The 'SNMP Trap Code' field must have a value."}}) {
    EXPECT_THAT(PressOk(dialog), ElementsAre(message, "focus " + std::to_string(control)));
    view_.texts[control] = "night";
  }
  EXPECT_THAT(files_.files, IsEmpty());
  EXPECT_THAT(PressOk(dialog), ElementsAre("close"));
  EXPECT_EQ(dialog.saved_name(), "night");
}

TEST_F(BeeperDialogTest, RefusesANameThatIsTakenBeforeItLooksAtTheFields) {
  files_.files["dir\\night"] = FileOf(0);
  InstanceDialog& dialog = Add();
  dialog.Open();
  view_.texts[kName] = "night";
  dialog.Press(STANDARD_OK);
  EXPECT_THAT(view_.events, ElementsAre(kNameTaken, "focus 223"));
}

TEST_F(BeeperDialogTest, IsModifiedByASelectionAndNotByThePortSettings) {
  InstanceDialog& dialog = Add();
  dialog.Open();
  EXPECT_FALSE(dialog.modified());
  dialog.Press(kPortSettings);
  EXPECT_FALSE(dialog.modified());
  Choose(dialog, 1);
  EXPECT_TRUE(dialog.modified());
}

TEST_F(BeeperDialogTest, WritesNoSettings) {
  files_.files["dir\\night"] = FileOf(1);
  InstanceDialog& dialog = Edit("night");
  dialog.Open();
  Choose(dialog, 2);
  dialog.Press(STANDARD_OK);
  ExpectNoSettingsWritten();
}

}  // namespace
}  // namespace brantel
