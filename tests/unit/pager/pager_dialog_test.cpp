#include "pager/pager_dialog.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "instance/instance_codec.h"
#include "pager/pager_description.h"
#include "tests/unit/dialog/fake_dialog_view.h"
#include "tests/unit/instance/fake_instance_files.h"
#include "tests/unit/notifier/fake_notifier_host.h"
#include "tests/unit/system/fake_settings_store.h"

namespace brantel {
namespace {

using ::testing::_;
using ::testing::Contains;
using ::testing::Each;
using ::testing::ElementsAre;
using ::testing::IsEmpty;
using ::testing::Not;
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
constexpr int kModemString = 219;

const std::string kKey = "SOFTWARE\\Brantel\\Vantrel\\notification\\Pager";

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

class PagerDialogTest : public ::testing::Test {
 protected:
  ModemInstanceDialog Add() {
    return {kPagerDialog, view_, files_, {.directory = "dir", .host = &host_}, settings_};
  }
  ModemInstanceDialog Edit(const std::string& name) {
    return {kPagerDialog,
            view_,
            files_,
            {"dir", InstanceArgument{std::u16string(name.begin(), name.end()), name}, &host_},
            settings_};
  }

  // What an operator does in the list.
  void Choose(ModemInstanceDialog& dialog, std::size_t position) {
    view_.SelectItem(kProfiles, position);
    dialog.Select(kProfiles);
  }

  // What an operator does in the group of radio buttons.
  void Check(ModemInstanceDialog& dialog, int button) {
    view_.checks.clear();
    view_.checks[button] = true;
    dialog.Press(button);
  }

  std::vector<int> Checked() {
    std::vector<int> checked;
    for (const auto& [control, is_checked] : view_.checks) {
      if (is_checked) checked.push_back(control);
    }
    return checked;
  }

  void ExpectSaved(ModemInstanceDialog& dialog, const std::string& file) {
    view_.events.clear();
    dialog.Press(STANDARD_OK);
    EXPECT_THAT(view_.events, ElementsAre("close"));
    EXPECT_EQ(files_.files["dir\\night"], file);
  }

  FakeDialogView view_;
  FakeInstanceFiles files_;
  FakeSettingsStore settings_;
  FakeNotifierHost host_;
};

TEST_F(PagerDialogTest, IsDialog137WithItsHelp) {
  ModemInstanceDialog dialog = Add();
  EXPECT_EQ(dialog.template_id(), 137);
  EXPECT_THAT(dialog.bitmap_buttons(), IsEmpty());
  dialog.Press(STANDARD_HELP);
  EXPECT_THAT(view_.events, ElementsAre("help 131196"));
}

TEST_F(PagerDialogTest, AddsFromTheTextsOfTheDefaultInstanceAndWithTap) {
  files_.files["dir\\Default"] = FileOf("UCP-SMS", 1);
  ModemInstanceDialog dialog = Add();
  dialog.Open();
  EXPECT_EQ(view_.title, "Add Pager Instance");
  EXPECT_THAT(view_.texts, ElementsAre(Pair(kPagerNumber, "5550200"), Pair(kPassword, "secret"),
                                       Pair(kPagerId, "0041 79"), Pair(kMessage, "%n is down")));
  EXPECT_THAT(Checked(), ElementsAre(kTap));
  EXPECT_THAT(view_.selections[kProfiles], Optional(1U));
  EXPECT_THAT(host_.log, IsEmpty());
  EXPECT_THAT(settings_.calls, IsEmpty());
  view_.texts[kName] = "night";
  ExpectSaved(dialog, FileOf("TAP", 1));
  EXPECT_EQ(dialog.saved_name(), "night");
}

TEST_F(PagerDialogTest, StaysEmptyAndLogsWithoutADefaultInstance) {
  Add().Open();
  EXPECT_EQ(view_.title, "Add Pager Instance");
  EXPECT_THAT(view_.texts, Each(Pair(_, "")));
  EXPECT_THAT(Checked(), ElementsAre(kTap));
  EXPECT_THAT(view_.selections[kProfiles], Optional(0U));
  EXPECT_THAT(host_.log,
              ElementsAre("Default Beeper", " - Failed to load notification from disk.", "\r"));
  EXPECT_THAT(view_.events, IsEmpty());
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
      ModemInstanceDialog dialog = Edit("night");
      dialog.Open();
      EXPECT_EQ(view_.title, "Edit Pager Instance");
      EXPECT_THAT(view_.texts, ElementsAre(Pair(kPagerNumber, "5550200"), Pair(kPassword, "secret"),
                                           Pair(kPagerId, "0041 79"), Pair(kMessage, "%n is down"),
                                           Pair(kName, "night")));
      EXPECT_THAT(Checked(), ElementsAre(button));
      EXPECT_THAT(view_.selections[kProfiles], Optional(static_cast<std::size_t>(profile)));
      ExpectSaved(dialog, FileOf(protocol, profile));
    }
  }
}

TEST_F(PagerDialogTest, TakesAProtocolThatItDoesNotKnowForTap) {
  for (const std::string protocol : {"tap", "", "TAP ", "SMS", "ucp-sms"}) {
    files_.files["dir\\night"] = FileOf(protocol);
    ModemInstanceDialog dialog = Edit("night");
    dialog.Open();
    EXPECT_THAT(Checked(), ElementsAre(kTap)) << protocol;
    ExpectSaved(dialog, FileOf("TAP"));
  }
}

TEST_F(PagerDialogTest, SavesTheProtocolThatTheOperatorChecks) {
  const std::vector<std::pair<std::string, int>> protocols = {
      {"NTT", kNtt}, {"UCP-SMS", kUcpSms}, {"SMS-TAP", kSmsTap}, {"TAP", kTap}};
  for (const auto& [protocol, button] : protocols) {
    files_.files["dir\\night"] = FileOf("SMS-TAP");
    ModemInstanceDialog dialog = Edit("night");
    dialog.Open();
    EXPECT_FALSE(dialog.modified());
    Check(dialog, button);
    EXPECT_TRUE(dialog.modified());
    ExpectSaved(dialog, FileOf(protocol));
  }
}

TEST_F(PagerDialogTest, LeavesTheProtocolWhereNoneIsChecked) {
  files_.files["dir\\night"] = FileOf("tap");
  ModemInstanceDialog dialog = Edit("night");
  dialog.Open();
  view_.checks.clear();
  ExpectSaved(dialog, FileOf("tap"));
}

TEST_F(PagerDialogTest, TellsAndLogsWhenTheInstanceCannotBeLoaded) {
  Edit("night").Open();
  EXPECT_EQ(view_.title, "Edit Pager Instance");
  EXPECT_THAT(view_.events, ElementsAre("message Error loading the instance file"));
  EXPECT_THAT(host_.log, ElementsAre("night", " - Failed to load notification from disk.", "\r"));
  EXPECT_THAT(view_.texts, IsEmpty());
  EXPECT_THAT(Checked(), ElementsAre(kTap));
  EXPECT_THAT(view_.selections[kProfiles], Optional(0U));
}

TEST_F(PagerDialogTest, KeepsAProfileThatItDoesNotOffer) {
  files_.files["dir\\night"] = FileOf("NTT", 5);
  ModemInstanceDialog dialog = Edit("night");
  dialog.Open();
  EXPECT_EQ(view_.selections[kProfiles], std::nullopt);
  ExpectSaved(dialog, FileOf("NTT", 5));
}

TEST_F(PagerDialogTest, WantsANameAndANumberAndNothingElse) {
  ModemInstanceDialog dialog = Add();
  dialog.Open();
  dialog.Press(STANDARD_OK);
  EXPECT_THAT(view_.events,
              ElementsAre("message Invalid value - The 'Display Name' field must have a value",
                          "focus 222"));
  view_.texts[kName] = "night";
  view_.events.clear();
  dialog.Press(STANDARD_OK);
  EXPECT_THAT(view_.events,
              ElementsAre("message Invalid value - The 'Pager Number' field must have a value.",
                          "focus 218"));
  EXPECT_THAT(files_.files, IsEmpty());
  view_.texts[kPagerNumber] = "1";
  view_.events.clear();
  dialog.Press(STANDARD_OK);
  EXPECT_THAT(view_.events, ElementsAre("close"));
}

TEST_F(PagerDialogTest, RefusesANameThatIsTakenBeforeItLooksAtTheNumber) {
  files_.files["dir\\night"] = FileOf("TAP");
  ModemInstanceDialog dialog = Add();
  dialog.Open();
  view_.texts[kName] = "night";
  dialog.Press(STANDARD_OK);
  EXPECT_THAT(view_.events,
              ElementsAre("message Instance name already exists.  Please choose another name "
                          "[Invalid Instance Name]",
                          "focus 222"));
}

TEST_F(PagerDialogTest, OpensThePortSettingsOfTheSelectedProfile) {
  for (const auto& [subkey, text] : {std::pair("", "AT0"), {"\\02", "AT2"}, {"\\05", "AT5"}}) {
    settings_.keys[kKey + subkey]["Settings_ModemString"] = {SettingType::kText, text};
  }
  files_.files["dir\\night"] = FileOf("TAP", 5);
  std::string modem_string;
  view_.in_shown_dialog = [&](Dialog& shown, FakeDialogView& view) {
    EXPECT_EQ(shown.template_id(), 138);
    modem_string = view.texts[kModemString];
  };
  ModemInstanceDialog dialog = Edit("night");
  dialog.Open();
  dialog.Press(kPortSettings);
  EXPECT_EQ(modem_string, "AT5");
  Choose(dialog, 2);
  dialog.Press(kPortSettings);
  EXPECT_EQ(modem_string, "AT2");
  Choose(dialog, 0);
  dialog.Press(kPortSettings);
  EXPECT_EQ(modem_string, "AT0");
}

TEST_F(PagerDialogTest, SavesPortSettingsApartFromTheInstance) {
  files_.files["dir\\night"] = FileOf("TAP", 2);
  view_.in_shown_dialog = [&](Dialog& shown, FakeDialogView& view) {
    view.texts[kModemString] = "ATZ";
    shown.Press(STANDARD_OK);
  };
  ModemInstanceDialog dialog = Edit("night");
  dialog.Open();
  dialog.Press(kPortSettings);
  dialog.Press(STANDARD_CANCEL);
  EXPECT_EQ(settings_.keys[kKey + "\\02"]["Settings_ModemString"].data, "ATZ");
  EXPECT_EQ(files_.files["dir\\night"], FileOf("TAP", 2));
}

TEST_F(PagerDialogTest, WritesNoSettings) {
  files_.files["dir\\night"] = FileOf("TAP");
  ModemInstanceDialog dialog = Edit("night");
  dialog.Open();
  Choose(dialog, 2);
  ExpectSaved(dialog, FileOf("TAP", 2));
  EXPECT_THAT(settings_.calls, Not(Contains(::testing::StartsWith("write"))));
}

}  // namespace
}  // namespace brantel
