#include "dialog/instance_dialog.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <array>

#include "instance/instance_codec.h"
#include "tests/unit/allocation_counter.h"
#include "tests/unit/dialog/instance_dialog_fixture.h"

namespace brantel {
namespace {

using ::testing::Each;
using ::testing::ElementsAre;
using ::testing::HasSubstr;
using ::testing::IsEmpty;
using ::testing::Not;
using ::testing::Optional;
using ::testing::Pair;
using ::testing::UnorderedElementsAre;

constexpr int kName = 20;
constexpr int kFirst = 21;
constexpr int kBox = 22;
constexpr int kNumber = 23;
constexpr int kSecond = 24;
constexpr int kOwnButton = 30;

constexpr auto kFields = FieldsInFileOrder<5>({
    {.index = 0, .name = "first", .control = {ControlKind::kEdit, kFirst, text_id::kUpCodeMissing}},
    {.index = 1, .name = "hidden"},
    {.index = 2,
     .name = "box",
     .kind = FieldKind::kInteger,
     .control = {ControlKind::kCheckBox, kBox}},
    {.index = 3,
     .name = "number",
     .kind = FieldKind::kInteger,
     .control = {ControlKind::kEdit, kNumber}},
    {.index = 4,
     .name = "second",
     .control = {ControlKind::kEdit, kSecond, text_id::kDownCodeMissing}},
});
constexpr InstanceLayout kLayout = {.magic = ParseGuid("00112233-4455-6677-8899-AABBCCDDEEFF"),
                                    .fields = kFields,
                                    .default_name_id = text_id::kDefaultBeeper};
constexpr ClassDescription kClass = {.instances = kLayout,
                                     .dialog = {.add_title_id = text_id::kAddPager,
                                                .edit_title_id = text_id::kEditPager,
                                                .name_control = kName,
                                                .name_error_focus = kName,
                                                .help_context = 4711}};

const std::string kFirstMissing = "message Invalid value - The 'Up Code' field must have a value.";
const std::string kSecondMissing =
    "message Invalid value - The 'Down Code' field must have a value.";
const std::string kNotSaved = "message Error saving instance file";

struct Values {
  std::string first = "one";
  std::string hidden{};
  std::int32_t box = 0;
  std::int32_t number = 0;
  std::string second = "two";
};

std::string FileOf(const Values& values) {
  Instance instance(kLayout.fields.size());
  instance.set_text(0, values.first);
  instance.set_text(1, values.hidden);
  instance.set_integer(2, values.box);
  instance.set_integer(3, values.number);
  instance.set_text(4, values.second);
  return EncodeInstance(kLayout, instance);
}

class InstanceDialogTest : public InstanceDialogFixture {
 protected:
  void Enter(const std::string& name, const std::string& first, const std::string& second) {
    view_.texts[kName] = name;
    view_.texts[kFirst] = first;
    view_.texts[kSecond] = second;
  }
};

TEST_F(InstanceDialogTest, OpensForANewInstanceWithTheDefaultsValuesAndNoName) {
  files_.files["dir\\Default"] = FileOf({.box = 5, .number = -3});
  InstanceDialog dialog(kClass, view_, files_, CallToAdd());
  dialog.Open();
  EXPECT_EQ(view_.title, "Add Pager Instance");
  EXPECT_THAT(view_.texts,
              UnorderedElementsAre(Pair(kFirst, "one"), Pair(kNumber, "-3"), Pair(kSecond, "two")));
  EXPECT_THAT(view_.checks, ElementsAre(Pair(kBox, true)));
  EXPECT_THAT(view_.events, IsEmpty());
  EXPECT_THAT(host_.log, IsEmpty());
}

TEST_F(InstanceDialogTest, OpensEmptyAndLogsWhenThereIsNoDefault) {
  InstanceDialog dialog(kClass, view_, files_, CallToAdd());
  dialog.Open();
  EXPECT_EQ(view_.title, "Add Pager Instance");
  EXPECT_THAT(view_.texts,
              UnorderedElementsAre(Pair(kFirst, ""), Pair(kNumber, "0"), Pair(kSecond, "")));
  EXPECT_FALSE(dialog.modified());
  EXPECT_THAT(view_.events, IsEmpty());
  EXPECT_THAT(host_.log,
              ElementsAre("Default Beeper", " - Failed to load notification from disk.", "\r"));
}

TEST_F(InstanceDialogTest, OpensForAnInstanceWithItsNameAndValues) {
  files_.files["dir\\night"] = FileOf({.number = 12});
  InstanceDialog dialog(kClass, view_, files_, CallToEdit("night"));
  dialog.Open();
  EXPECT_EQ(view_.title, "Edit Pager Instance");
  EXPECT_THAT(view_.texts, UnorderedElementsAre(Pair(kName, "night"), Pair(kFirst, "one"),
                                                Pair(kNumber, "12"), Pair(kSecond, "two")));
  EXPECT_THAT(view_.checks, ElementsAre(Pair(kBox, false)));
  EXPECT_THAT(files_.calls, ElementsAre("read dir\\night"));
}

TEST_F(InstanceDialogTest, OpensEmptyLogsAndTellsWhenTheInstanceCannotBeLoaded) {
  files_.files["dir\\night"] = "of another class";
  InstanceDialog dialog(kClass, view_, files_, CallToEdit("night"));
  dialog.Open();
  EXPECT_EQ(view_.title, "Edit Pager Instance");
  EXPECT_THAT(view_.texts, IsEmpty());
  EXPECT_THAT(view_.events, ElementsAre("message Error loading the instance file"));
  EXPECT_THAT(host_.log, ElementsAre("night", " - Failed to load notification from disk.", "\r"));
}

TEST_F(InstanceDialogTest, KeepsTheTitleUnsetAfterAFailedLoadWhereTheClassHasItSo) {
  ClassDescription notifier_class = kClass;
  notifier_class.dialog.titled_after_failed_load = false;
  InstanceDialog failed(notifier_class, view_, files_, CallToEdit("night"));
  failed.Open();
  EXPECT_EQ(view_.title, "");

  files_.files["dir\\night"] = FileOf({});
  InstanceDialog loaded(notifier_class, view_, files_, CallToEdit("night"));
  loaded.Open();
  EXPECT_EQ(view_.title, "Edit Pager Instance");
}

TEST_F(InstanceDialogTest, NeedsNoHost) {
  InstanceDialog added(kClass, view_, files_, {.directory = "dir"});
  added.Open();
  InstanceDialog edited(kClass, view_, files_, {"dir", InstanceArgument{u"night", "night"}});
  edited.Open();
  EXPECT_THAT(view_.events, ElementsAre("message Error loading the instance file"));
}

TEST_F(InstanceDialogTest, LimitsWhatCanBeTypedToWhatCanBeLoadedAgain) {
  InstanceDialog dialog(kClass, view_, files_, CallToAdd());
  dialog.Open();
  EXPECT_THAT(view_.limits, UnorderedElementsAre(Pair(kName, 512U), Pair(kFirst, 1022U),
                                                 Pair(kNumber, 1022U), Pair(kSecond, 1022U)));
}

TEST_F(InstanceDialogTest, LimitsNoTextThatTheChunkedReaderLoads) {
  InstanceLayout layout = kLayout;
  layout.text_reader = TextReader::kChunked;
  const ClassDescription notifier_class = {.instances = layout, .dialog = {.name_control = kName}};
  InstanceDialog dialog(notifier_class, view_, files_, CallToAdd());
  dialog.Open();
  EXPECT_EQ(view_.limits[kFirst], std::string::npos);

  Enter("night", std::string(5000, 'x'), "two");
  PressOk(dialog);
  EXPECT_EQ(files_.files["dir\\night"], FileOf({.first = std::string(5000, 'x')}));
}

TEST_F(InstanceDialogTest, SavesTextsThatCanBeLoadedAgain) {
  InstanceDialog dialog(kClass, view_, files_, CallToAdd());
  Enter("night", std::string(2000, 'x'), "two");
  EXPECT_THAT(PressOk(dialog), ElementsAre("close"));
  EXPECT_EQ(files_.files["dir\\night"], FileOf({.first = std::string(1022, 'x')}));
  EXPECT_TRUE(DecodeInstance(kLayout, files_.files["dir\\night"]));
}

TEST_F(InstanceDialogTest, WantsTheNameFirstAndThenTheFieldsInOrder) {
  files_.files["dir\\taken"] = "";
  InstanceDialog dialog(kClass, view_, files_, CallToAdd());
  EXPECT_THAT(PressOk(dialog), ElementsAre(kNameMissing, "focus 20"));
  Enter("taken", "", "");
  EXPECT_THAT(PressOk(dialog), ElementsAre(kNameTaken, "focus 20"));
  Enter("night", "", "");
  EXPECT_THAT(PressOk(dialog), ElementsAre(kFirstMissing, "focus 21"));
  Enter("night", "one", "");
  EXPECT_THAT(PressOk(dialog), ElementsAre(kSecondMissing, "focus 24"));
  EXPECT_THAT(files_.calls, IsEmpty());
  EXPECT_FALSE(dialog.saved_name());
  Enter("night", "one", "two");
  EXPECT_THAT(PressOk(dialog), ElementsAre("close"));
  EXPECT_THAT(files_.calls, ElementsAre("write dir\\night"));
  EXPECT_EQ(dialog.saved_name(), "night");
}

TEST_F(InstanceDialogTest, AsksLastWhetherTheNameIsTakenWhereTheClassHasItSo) {
  ClassDescription notifier_class = kClass;
  notifier_class.dialog.name_taken_check = NameTakenCheck::kAfterFields;
  files_.files["dir\\taken"] = "kept";
  InstanceDialog dialog(notifier_class, view_, files_, CallToAdd());
  EXPECT_THAT(PressOk(dialog), ElementsAre(kNameMissing, "focus 20"));
  Enter("taken", "", "two");
  EXPECT_THAT(PressOk(dialog), ElementsAre(kFirstMissing, "focus 21"));
  Enter("taken", "one", "two");
  EXPECT_THAT(PressOk(dialog), ElementsAre(kNameTaken, "focus 20"));
  EXPECT_EQ(files_.files["dir\\taken"], "kept");
}

TEST_F(InstanceDialogTest, CallsTheNameAsTheClassDoesAndMovesTheFocusWhereItSays) {
  ClassDescription notifier_class = kClass;
  notifier_class.dialog.name_missing_text_id = text_id::kDisplayNameMissing;
  notifier_class.dialog.name_error_focus = 99;
  files_.files["dir\\taken"] = "";
  InstanceDialog dialog(notifier_class, view_, files_, CallToAdd());
  EXPECT_THAT(PressOk(dialog),
              ElementsAre("message Invalid value - The 'Display Name' field must have a value",
                          "focus 99"));
  Enter("taken", "one", "two");
  EXPECT_THAT(PressOk(dialog), ElementsAre(kNameTaken, "focus 99"));
}

TEST_F(InstanceDialogTest, CannotSaveUnderANameThatLeavesTheDirectoryOrIsNone) {
  files_.files["dir\\..\\other"] = "kept";
  InstanceDialog dialog(kClass, view_, files_, CallToAdd());
  for (const char* name :
       {"..\\other", "a/b", "C:x", "con", "com\xB9", "clock$", "night.", "night ", ".", ".."}) {
    Enter(name, "one", "two");
    EXPECT_THAT(PressOk(dialog), ElementsAre(kNotSaved)) << name;
    EXPECT_THAT(files_.calls, IsEmpty()) << name;
  }
  EXPECT_FALSE(dialog.saved_name());
}

TEST_F(InstanceDialogTest, TellsOfABadNameOnlyWhenAllElseIsEntered) {
  InstanceDialog dialog(kClass, view_, files_, CallToAdd());
  Enter("a/b", "", "");
  EXPECT_THAT(PressOk(dialog), ElementsAre(kFirstMissing, "focus 21"));
}

TEST_F(InstanceDialogTest, StaysOpenWhenTheFileCannotBeWrittenAndSavesOnANextTry) {
  files_.held.insert("dir\\night");
  InstanceDialog dialog(kClass, view_, files_, CallToAdd());
  Enter("night", "one", "two");
  EXPECT_THAT(PressOk(dialog), ElementsAre(kNotSaved));
  EXPECT_FALSE(dialog.saved_name());
  files_.held.clear();
  EXPECT_THAT(PressOk(dialog), ElementsAre("close"));
  EXPECT_EQ(dialog.saved_name(), "night");
}

TEST_F(InstanceDialogTest, TakesDefaultForANameLikeAnyOther) {
  InstanceDialog dialog(kClass, view_, files_, CallToAdd());
  Enter("Default", "one", "two");
  EXPECT_THAT(PressOk(dialog), ElementsAre("close"));
  InstanceDialog second(kClass, view_, files_, CallToAdd());
  EXPECT_THAT(PressOk(second), ElementsAre(kNameTaken, "focus 20"));
  InstanceDialog edited(kClass, view_, files_, CallToEdit("Default"));
  edited.Open();
  Enter("Evening", "one", "two");
  EXPECT_THAT(PressOk(edited), ElementsAre("close"));
  EXPECT_THAT(files_.files, ElementsAre(Pair("dir\\Evening", FileOf({}))));
}

TEST_F(InstanceDialogTest, SavesAnEditedInstanceUnderItsOwnName) {
  files_.files["dir\\night"] = FileOf({});
  InstanceDialog dialog(kClass, view_, files_, CallToEdit("night"));
  dialog.Open();
  view_.texts[kFirst] = "changed";
  view_.checks[kBox] = true;
  view_.texts[kNumber] = "42";
  EXPECT_THAT(PressOk(dialog), ElementsAre("close"));
  EXPECT_THAT(files_.calls, ElementsAre("write dir\\night"));
  EXPECT_EQ(files_.files["dir\\night"], FileOf({.first = "changed", .box = 1, .number = 42}));
  EXPECT_EQ(dialog.saved_name(), "night");
}

TEST_F(InstanceDialogTest, KeepsWhatItDoesNotShow) {
  files_.files["dir\\night"] = FileOf({.hidden = "stored"});
  InstanceDialog dialog(kClass, view_, files_, CallToEdit("night"));
  dialog.Open();
  view_.texts[kFirst] = "changed";
  PressOk(dialog);
  EXPECT_EQ(files_.files["dir\\night"], FileOf({.first = "changed", .hidden = "stored"}));
}

TEST_F(InstanceDialogTest, GivesANewInstanceWhatItDoesNotShowFromTheDefault) {
  files_.files["dir\\Default"] = FileOf({.hidden = "stored"});
  InstanceDialog dialog(kClass, view_, files_, CallToAdd());
  dialog.Open();
  view_.texts[kName] = "night";
  PressOk(dialog);
  EXPECT_EQ(files_.files["dir\\night"], FileOf({.hidden = "stored"}));
}

TEST_F(InstanceDialogTest, RenamesBySavingTheNewFileBeforeTheOldOneGoes) {
  files_.files["dir\\night"] = FileOf({});
  InstanceDialog dialog(kClass, view_, files_, CallToEdit("night"));
  dialog.Open();
  view_.texts[kName] = "day";
  EXPECT_THAT(PressOk(dialog), ElementsAre("close"));
  EXPECT_THAT(files_.calls, ElementsAre("write dir\\day", "delete dir\\night"));
  EXPECT_THAT(files_.files, ElementsAre(Pair("dir\\day", FileOf({}))));
  EXPECT_EQ(dialog.saved_name(), "day");
}

TEST_F(InstanceDialogTest, KeepsTheOldFileWhenTheNewOneCannotBeSaved) {
  files_.files["dir\\night"] = FileOf({});
  files_.held.insert("dir\\day");
  InstanceDialog dialog(kClass, view_, files_, CallToEdit("night"));
  dialog.Open();
  view_.texts[kName] = "day";
  EXPECT_THAT(PressOk(dialog), ElementsAre(kNotSaved));
  view_.texts[kName] = "a\\b";
  EXPECT_THAT(PressOk(dialog), ElementsAre(kNotSaved));
  EXPECT_THAT(files_.files, ElementsAre(Pair("dir\\night", FileOf({}))));
}

TEST_F(InstanceDialogTest, RenamesAlsoWhenTheOldFileCannotBeDeleted) {
  files_.files["dir\\night"] = FileOf({});
  InstanceDialog dialog(kClass, view_, files_, CallToEdit("night"));
  dialog.Open();
  files_.held.insert("dir\\night");
  view_.texts[kName] = "day";
  EXPECT_THAT(PressOk(dialog), ElementsAre("close"));
  EXPECT_EQ(files_.files.size(), 2U);
}

TEST_F(InstanceDialogTest, RefusesToRenameToAnotherInstance) {
  files_.files["dir\\night"] = FileOf({});
  files_.files["dir\\day"] = "another's";
  InstanceDialog dialog(kClass, view_, files_, CallToEdit("night"));
  dialog.Open();
  view_.texts[kName] = "day";
  EXPECT_THAT(PressOk(dialog), ElementsAre(kNameTaken, "focus 20"));
  EXPECT_EQ(files_.files["dir\\day"], "another's");
}

TEST_F(InstanceDialogTest, GivesTheFileItsNewLettersWhenTheirCaseAloneChanges) {
  files_.files
      ["dir\\\xFC"
       "ber"] = FileOf({});
  InstanceDialog dialog(kClass, view_, files_,
                        CallToEdit("\xFC"
                                   "ber"));
  dialog.Open();
  view_.texts[kName] =
      "\xDC"
      "BER";
  view_.texts[kFirst] = "changed";
  EXPECT_THAT(PressOk(dialog), ElementsAre("close"));
  EXPECT_THAT(files_.files, ElementsAre(Pair("dir\\\xDC"
                                             "BER",
                                             FileOf({.first = "changed"}))));
  EXPECT_EQ(dialog.saved_name(),
            "\xDC"
            "BER");
}

TEST_F(InstanceDialogTest, AnswersTheNameThatStandsInTheDirectory) {
  files_.files["dir\\Night shift"] = FileOf({});
  files_.short_paths["dir\\NIGHTS~1"] = "dir\\Night shift";
  for (const std::string name : {"NIGHT SHIFT", "nights~1"}) {
    InstanceDialog dialog(kClass, view_, files_, CallToEdit(name));
    dialog.Open();
    EXPECT_EQ(view_.texts[kName], name);
    EXPECT_THAT(PressOk(dialog), ElementsAre("close"));
    EXPECT_EQ(dialog.saved_name(), "Night shift");
    EXPECT_THAT(files_.files, ElementsAre(Pair("dir\\Night shift", FileOf({}))));
  }
}

TEST_F(InstanceDialogTest, TellsNamesApartThatAreAlikeInDictionaries) {
  const std::string pairs[][2] = {{"Strasse",
                                   "Stra\xDF"
                                   "e"},
                                  {"aegir", "\xC6gir"},
                                  {"oeuf", "\x9Cuf"},
                                  {"thing", "\xDEing"},
                                  {"coop", "co\xADop"}};
  for (const auto& [edited, other] : pairs) {
    files_.files = {{"dir\\" + edited, FileOf({})}, {"dir\\" + other, "another's"}};
    const auto before = files_.files;
    InstanceDialog dialog(kClass, view_, files_, CallToEdit(edited));
    dialog.Open();
    view_.texts[kName] = other;
    EXPECT_THAT(PressOk(dialog), ElementsAre(kNameTaken, "focus 20")) << other;
    EXPECT_EQ(files_.files, before);

    files_.files.erase("dir\\" + other);
    EXPECT_THAT(PressOk(dialog), ElementsAre("close"));
    EXPECT_THAT(files_.files, ElementsAre(Pair("dir\\" + other, FileOf({}))));
    EXPECT_EQ(dialog.saved_name(), other);
  }
}

TEST_F(InstanceDialogTest, RefusesEveryNameThatLeadsToAnothersFile) {
  files_.files["dir\\\xD6lmeldung"] = "another's";
  files_.short_paths["dir\\\xD6LMELD~1"] = "dir\\\xD6lmeldung";
  files_.held.insert("dir\\\xD6lmeldung");
  InstanceDialog dialog(kClass, view_, files_, CallToAdd());
  for (const char* name : {"\xF6LMELDUNG", "\xF6lmeld~1"}) {
    Enter(name, "one", "two");
    EXPECT_THAT(PressOk(dialog), ElementsAre(kNameTaken, "focus 20")) << name;
  }
}

// Somebody removed it while the dialog was open, so the new file is the only one.
TEST_F(InstanceDialogTest, KeepsWhatItSavesWhereTheEditedFileIsGone) {
  for (const std::string edited : {"night", ".\\night"}) {
    files_.files = {{"dir\\" + edited, FileOf({})}};
    InstanceDialog dialog(kClass, view_, files_, CallToEdit(edited));
    dialog.Open();
    files_.files.clear();
    view_.texts[kName] = "NIGHT";
    EXPECT_THAT(PressOk(dialog), ElementsAre("close"));
    EXPECT_THAT(files_.files, ElementsAre(Pair("dir\\NIGHT", FileOf({}))));
    EXPECT_THAT(files_.calls, Each(Not(HasSubstr("delete"))));
  }
}

TEST_F(InstanceDialogTest, DeletesNoFileThatCouldNotBeLoaded) {
  files_.files["dir\\night"] = "of another class";
  InstanceDialog dialog(kClass, view_, files_, CallToEdit("night"));
  dialog.Open();
  Enter("day", "one", "two");
  EXPECT_THAT(PressOk(dialog), ElementsAre("close"));
  EXPECT_EQ(files_.files["dir\\night"], "of another class");
  EXPECT_EQ(files_.files["dir\\day"], FileOf({}));
}

TEST_F(InstanceDialogTest, OverwritesNoFileOfAnotherClassUnderItsOwnName) {
  files_.files["dir\\night"] = "of another class";
  InstanceDialog dialog(kClass, view_, files_, CallToEdit("night"));
  dialog.Open();
  for (const char* name : {"night", "NIGHT"}) {
    Enter(name, "one", "two");
    EXPECT_THAT(PressOk(dialog), ElementsAre(kNameTaken, "focus 20"));
    EXPECT_THAT(files_.files, ElementsAre(Pair("dir\\night", "of another class")));
  }
}

TEST_F(InstanceDialogTest, MendsADamagedFileOfItsClassUnderItsOwnName) {
  files_.files["dir\\night"] = FileOf({.first = std::string(1023, 'x')});
  InstanceDialog dialog(kClass, view_, files_, CallToEdit("night"));
  dialog.Open();
  EXPECT_THAT(view_.events, ElementsAre("message Error loading the instance file"));
  Enter("night", "one", "two");
  EXPECT_THAT(PressOk(dialog), ElementsAre("close"));
  EXPECT_THAT(files_.files, ElementsAre(Pair("dir\\night", FileOf({}))));
}

TEST_F(InstanceDialogTest, SavesAnInstanceThatWasMissingUnderItsOwnName) {
  InstanceDialog dialog(kClass, view_, files_, CallToEdit("night"));
  dialog.Open();
  Enter("night", "one", "two");
  EXPECT_THAT(PressOk(dialog), ElementsAre("close"));
  EXPECT_THAT(files_.files, ElementsAre(Pair("dir\\night", FileOf({}))));
}

TEST_F(InstanceDialogTest, TellsAndLogsWhenThereIsNoMemoryToLoad) {
  files_.files["dir\\night"] = FileOf({});
  class WithoutMemory final : public InstanceDialog {
   public:
    using InstanceDialog::InstanceDialog;

   private:
    void FillLists() override { FailNextAllocation(); }
  };
  WithoutMemory dialog(kClass, view_, files_, CallToEdit("night"));
  dialog.Open();
  EXPECT_THAT(view_.events, ElementsAre("message Error loading the instance file"));
  EXPECT_THAT(host_.log, ElementsAre("night", " - Failed to load notification from disk.", "\r"));
}

TEST_F(InstanceDialogTest, TakesWhatIsNoNumberForZero) {
  const std::vector<std::pair<std::string, std::int32_t>> numbers = {
      {"7", 7},          {"-7", -7}, {"  7 ", 7}, {"2147483647", 2147483647},
      {"2147483648", 0}, {"", 0},    {"  ", 0},   {"seven", 0},
      {"7a", 0},         {"- 7", 0}};
  for (const auto& [text, number] : numbers) {
    files_.files.clear();
    InstanceDialog dialog(kClass, view_, files_, CallToAdd());
    Enter("night", "one", "two");
    view_.texts[kNumber] = text;
    PressOk(dialog);
    EXPECT_EQ(files_.files["dir\\night"], FileOf({.number = number})) << "'" << text << "'";
  }
}

TEST_F(InstanceDialogTest, ClosesOnCancelWithNothingSaved) {
  InstanceDialog dialog(kClass, view_, files_, CallToAdd());
  Enter("night", "one", "two");
  dialog.Press(STANDARD_CANCEL);
  EXPECT_THAT(view_.events, ElementsAre("close"));
  EXPECT_FALSE(dialog.saved_name());
  EXPECT_THAT(files_.files, IsEmpty());
}

TEST_F(InstanceDialogTest, ShowsHelpForTheButtonAndForTheContext) {
  InstanceDialog dialog(kClass, view_, files_, CallToAdd());
  dialog.Press(STANDARD_HELP);
  dialog.Help();
  EXPECT_THAT(view_.events, ElementsAre("help 4711", "help 4711"));
}

TEST_F(InstanceDialogTest, ShowsTheContentsOfTheHelpWhereItHasNoPageOfItsOwn) {
  ClassDescription notifier_class = kClass;
  notifier_class.dialog.help_context.reset();
  InstanceDialog dialog(notifier_class, view_, files_, CallToAdd());
  dialog.Press(STANDARD_HELP);
  EXPECT_THAT(view_.events, ElementsAre("help contents"));
}

TEST_F(InstanceDialogTest, MayHaveAnotherHelpButton) {
  ClassDescription notifier_class = kClass;
  notifier_class.dialog.help_button = kOwnButton;
  InstanceDialog dialog(notifier_class, view_, files_, CallToAdd());
  dialog.Press(STANDARD_HELP);
  EXPECT_THAT(view_.events, IsEmpty());
  dialog.Press(kOwnButton);
  EXPECT_THAT(view_.events, ElementsAre("help 4711"));
}

TEST_F(InstanceDialogTest, MayLetNewInstancesBeginEmpty) {
  files_.files["dir\\Default"] = FileOf({});
  ClassDescription notifier_class = kClass;
  notifier_class.dialog.prefilled = false;
  InstanceDialog dialog(notifier_class, view_, files_, CallToAdd());
  dialog.Open();
  EXPECT_EQ(view_.title, "Add Pager Instance");
  EXPECT_THAT(view_.texts, IsEmpty());
  EXPECT_THAT(files_.calls, IsEmpty());
  EXPECT_THAT(host_.log, IsEmpty());
}

TEST_F(InstanceDialogTest, AsksWhatTheClassRequiresWhenNothingIsMissingAndBeforeItSaves) {
  class Demanding final : public InstanceDialog {
   public:
    using InstanceDialog::InstanceDialog;

   private:
    bool Accepts(std::size_t field, const std::string& text) override {
      return field != 4 || text == "valid";
    }
  };
  Demanding dialog(kClass, view_, files_, CallToAdd());
  Enter("night", "one", "");
  EXPECT_THAT(PressOk(dialog), ElementsAre(kSecondMissing, "focus 24"));
  Enter("night", "one", "two");
  EXPECT_THAT(PressOk(dialog), ElementsAre(kSecondMissing, "focus 24"));
  EXPECT_THAT(files_.files, IsEmpty());
  Enter("night", "one", "valid");
  EXPECT_THAT(PressOk(dialog), ElementsAre("close"));
}

TEST_F(InstanceDialogTest, TakesNoMoreThanAFieldsOwnLimit) {
  auto fields = kFields;
  fields.rows[0].control.longest = 10;
  InstanceLayout layout = kLayout;
  layout.fields = fields;
  ClassDescription notifier_class = {.instances = layout, .dialog = {.name_control = kName}};
  InstanceDialog dialog(notifier_class, view_, files_, CallToAdd());
  dialog.Open();
  EXPECT_EQ(view_.limits[kFirst], 10U);
  EXPECT_EQ(view_.limits[kSecond], 1022U);
  Enter("night", "0123456789X", "two");
  PressOk(dialog);
  EXPECT_EQ(files_.files["dir\\night"], FileOf({.first = "0123456789"}));
}

TEST_F(InstanceDialogTest, IsModifiedByTheControlsThatItFills) {
  for (const int control : {kName, kFirst, kNumber, kSecond}) {
    InstanceDialog dialog(kClass, view_, files_, CallToAdd());
    dialog.Open();
    EXPECT_FALSE(dialog.modified());
    dialog.Change(control);
    EXPECT_TRUE(dialog.modified()) << control;
    dialog.Change(kOwnButton);
    EXPECT_TRUE(dialog.modified()) << control;
  }
  InstanceDialog dialog(kClass, view_, files_, CallToAdd());
  dialog.Press(kOwnButton);
  dialog.Change(kOwnButton);
  dialog.Change(0);  // a field without a control has this number
  EXPECT_FALSE(dialog.modified());
  dialog.Press(kBox);
  EXPECT_TRUE(dialog.modified());
}

TEST_F(InstanceDialogTest, IsNotModifiedByBeingFilled) {
  InstanceDialog dialog(kClass, view_, files_, CallToAdd());
  dialog.Change(kName);  // what setting a text makes an edit announce
  dialog.Open();
  EXPECT_FALSE(dialog.modified());
}

// Number fields that are chosen from a list.

constexpr int kColours = 40;
constexpr int kShapes = 41;
constexpr auto kListFields = FieldsInFileOrder<2>({
    {.index = 0,
     .name = "colour",
     .kind = FieldKind::kInteger,
     .control = {ControlKind::kList, kColours}},
    {.index = 1,
     .name = "shape",
     .kind = FieldKind::kInteger,
     .control = {ControlKind::kList, kShapes}},
});
constexpr InstanceLayout kListLayout = {
    .magic = kLayout.magic, .fields = kListFields, .default_name_id = text_id::kDefaultBeeper};
constexpr ClassDescription kListSpec = {.instances = kListLayout,
                                        .dialog = {.name_control = kName}};

std::string ListFile(std::int32_t colour, std::int32_t shape) {
  Instance instance(kListLayout.fields.size());
  instance.set_integer(0, colour);
  instance.set_integer(1, shape);
  return EncodeInstance(kListLayout, instance);
}

class ListDialog final : public InstanceDialog {
 public:
  ListDialog(FakeDialogView& view, FakeInstanceFiles& files, InstanceDialogCall call)
      : InstanceDialog(kListSpec, view, files, std::move(call)) {}

  // The lists whose selection changed, and what was selected then.
  std::vector<std::pair<int, std::optional<std::size_t>>> changes;

 private:
  void FillLists() override {
    view().FillList(kColours, {"red", "green", "blue"});
    view().FillList(kShapes, {"round", "square"});
  }
  void SelectionChanged(int list) override {
    changes.emplace_back(list, view().SelectedItem(list));
  }
};

class ListDialogTest : public InstanceDialogTest {
 protected:
  std::string SavedFile(ListDialog& dialog) {
    view_.texts[kName] = "night";
    PressOk(dialog);
    return files_.files["dir\\night"];
  }
};

TEST_F(ListDialogTest, ShowsTheStoredPositionsAndTellsOfEachListOnce) {
  files_.files["dir\\night"] = ListFile(2, 1);
  ListDialog dialog(view_, files_, CallToEdit("night"));
  dialog.Open();
  EXPECT_THAT(dialog.changes,
              ElementsAre(Pair(kColours, Optional(2U)), Pair(kShapes, Optional(1U))));
  EXPECT_FALSE(dialog.modified());
  EXPECT_EQ(SavedFile(dialog), ListFile(2, 1));
}

TEST_F(ListDialogTest, ShowsTheFirstItemsWhereNothingIsLoaded) {
  ListDialog dialog(view_, files_, CallToAdd());
  dialog.Open();
  EXPECT_THAT(dialog.changes,
              ElementsAre(Pair(kColours, Optional(0U)), Pair(kShapes, Optional(0U))));
  EXPECT_EQ(SavedFile(dialog), ListFile(0, 0));
}

TEST_F(ListDialogTest, SavesThePositionThatIsSelected) {
  files_.files["dir\\night"] = ListFile(2, 1);
  ListDialog dialog(view_, files_, CallToEdit("night"));
  dialog.Open();
  view_.SelectItem(kColours, 1);
  dialog.Select(kColours);
  EXPECT_THAT(dialog.changes.back(), Pair(kColours, Optional(1U)));
  EXPECT_TRUE(dialog.modified());
  EXPECT_EQ(SavedFile(dialog), ListFile(1, 1));
}

TEST_F(ListDialogTest, KeepsAPositionThatTheListDoesNotHave) {
  for (const std::int32_t position : {2, 7, -1}) {
    files_.files["dir\\night"] = ListFile(1, position);
    ListDialog dialog(view_, files_, CallToEdit("night"));
    dialog.Open();
    EXPECT_THAT(dialog.changes,
                ElementsAre(Pair(kColours, Optional(1U)), Pair(kShapes, std::nullopt)));
    EXPECT_EQ(SavedFile(dialog), ListFile(1, position));
  }
}

}  // namespace
}  // namespace brantel
