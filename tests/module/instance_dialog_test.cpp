// What the dialogs of all classes have in common, as an operator meets it.
#include <windows.h>
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <cctype>
#include <set>
#include <tuple>

#include "system/windows/handle_win32.h"
#include "tests/module/allocation_ledger.h"
#include "tests/module/dialog_fixture.h"
#include "tests/module/dialog_looks.h"
#include "tests/module/help_viewer.h"
#include "tests/module/settings_key.h"

namespace brantel {
namespace {

using ::testing::ElementsAre;
using ::testing::IsEmpty;
using ::testing::Pair;
using ::testing::Values;

constexpr const char* kTaken = "Instance name already exists.  Please choose another name";
constexpr const char* kTakenCaption = "Invalid Instance Name";
constexpr const char* kNotSaved = "Error saving instance file";

class InstanceDialogTest : public DialogFixture,
                           public ::testing::WithParamInterface<ExpectedDialog> {
 protected:
  InstanceDialogTest() : DialogFixture(GetParam()) {}

  void StoreSample(const wchar_t* name) {
    ASSERT_TRUE(std::filesystem::exists(scratch_.Write(name, expected_.sample_file)));
  }

  // Clicks OK with this name.
  void AcceptName(const std::string& name) {
    session_->SetText(NameControl(), name);
    session_->Click(kOk);
  }

  void ExpectFailedLoad(const std::wstring& which) {
    // A class that this machine does not let bind a host has nobody to tell.
    if (!expected_.notifier_class.binds_everywhere) {
      EXPECT_THAT(host_.log_calls, IsEmpty());
      return;
    }
    EXPECT_THAT(
        host_.log_calls,
        ElementsAre(LogCall{1, which}, LogCall{1, L" - Failed to load notification from disk."},
                    LogCall{1, expected_.load_failure_end}));
  }

  void ExpectUnfilledEdits() {
    for (const ExpectedEdit& edit : expected_.edits) {
      EXPECT_EQ(session_->Text(edit.control), edit.unfilled) << edit.control;
    }
  }

  // They would fill the dialing options.
  NoSettings no_settings_{kBeeperSettingsKey};
};

std::string NameOfDialog(const ::testing::TestParamInfo<ExpectedDialog>& dialog) {
  return dialog.param.notifier_class.name;
}

INSTANTIATE_TEST_SUITE_P(Classes, InstanceDialogTest,
                         Values(ExpectedBeeperDialog(), ExpectedPagerDialog(),
                                ExpectedSmtpMailDialog(), ExpectedSoundDialog(),
                                ExpectedLaunchProgramDialog(), ExpectedVoiceDialog()),
                         NameOfDialog);

// Dialogs of classes whose new instances begin as the one that is named "Default".
class PrefilledDialogTest : public InstanceDialogTest {};

INSTANTIATE_TEST_SUITE_P(Classes, PrefilledDialogTest,
                         Values(ExpectedBeeperDialog(), ExpectedPagerDialog(),
                                ExpectedSoundDialog(), ExpectedLaunchProgramDialog(),
                                ExpectedVoiceDialog()),
                         NameOfDialog);

// Dialogs of classes that store no text of 1023 bytes or more.
class LimitedDialogTest : public InstanceDialogTest {};

INSTANTIATE_TEST_SUITE_P(Classes, LimitedDialogTest,
                         Values(ExpectedBeeperDialog(), ExpectedPagerDialog(),
                                ExpectedSoundDialog(), ExpectedLaunchProgramDialog(),
                                ExpectedVoiceDialog()),
                         NameOfDialog);

// How it looks.

TEST_P(InstanceDialogTest, BelongsToTheActiveWindowAndKeepsItFromTheOperator) {
  Add();
  EXPECT_EQ(GetWindow(session_->dialog(), GW_OWNER), session_->owner());
  EXPECT_FALSE(IsWindowEnabled(session_->owner()));
  session_->Click(kCancel);
  ExpectCancelled();
}

TEST_P(InstanceDialogTest, OpensAlsoWithoutAnActiveWindowAndWithoutAHost) {
  DialogSession session(module_, {.notifier_class = expected_.notifier_class,
                                  .directory = scratch_.path().wstring()});
  EXPECT_EQ(GetWindow(session.dialog(), GW_OWNER), nullptr);
  EXPECT_EQ(WindowText(session.dialog()), expected_.add_title);
  session.Click(kCancel);
  EXPECT_EQ(session.Await().result, E_FAIL);
}

TEST_P(InstanceDialogTest, HasItsControlsInOrder) {
  Add();
  constexpr DWORD kSharedStyle = WS_CHILD | WS_VISIBLE;
  std::vector<ExpectedControl> controls;
  for (HWND child : Children(session_->dialog())) {
    EXPECT_EQ(StyleOf(child) & kSharedStyle, kSharedStyle);
    DWORD not_compared = kSharedStyle | WS_GROUP | WS_BORDER;
    // A list's strings and how it is painted are the system's.
    if (WindowClass(child) == "ComboBox") not_compared |= CBS_HASSTRINGS | WS_CLIPSIBLINGS;
    const auto id = static_cast<SHORT>(GetDlgCtrlID(child));
    // The default button's style moves with the focus; here it is where it begins.
    controls.push_back({id, WindowClass(child), WindowText(child), StyleOf(child) & ~not_compared});
  }
  EXPECT_EQ(controls, expected_.controls);
}

TEST_P(InstanceDialogTest, IsAFramedWindowWithATitleAndACloseButton) {
  Add();
  const auto style = static_cast<DWORD>(GetWindowLongA(session_->dialog(), GWL_STYLE));
  EXPECT_EQ(style & (WS_POPUP | WS_CAPTION | WS_SYSMENU | DS_MODALFRAME),
            WS_POPUP | WS_CAPTION | WS_SYSMENU | DS_MODALFRAME);
  const auto extended = static_cast<DWORD>(GetWindowLongA(session_->dialog(), GWL_EXSTYLE));
  EXPECT_NE(extended & WS_EX_CONTEXTHELP, 0U);
}

TEST_P(InstanceDialogTest, KeepsItsControlsApartAndShowsTheirTextsWhole) {
  Add();
  ExpectControlsApart(session_->dialog());
  ExpectTextsWhole(session_->dialog());
}

TEST_P(InstanceDialogTest, LeadsTheTabKeyThroughItsControlsInOrder) {
  Add();
  std::vector<int> expected_stops;
  for (const ExpectedControl& control : expected_.controls) {
    if ((control.style & WS_TABSTOP) != 0) expected_stops.push_back(control.id);
  }
  std::vector<int> stops;
  do {
    stops.push_back(session_->Focus());
    session_->PressKey(VK_TAB);
  } while (session_->Focus() != stops.front() && stops.size() < 50);
  EXPECT_EQ(stops, expected_stops);
}

TEST_P(InstanceDialogTest, LeadsAccessKeysToTheEdits) {
  Add();
  for (const ExpectedEdit& edit : expected_.edits) {
    if (edit.access_key == '\0') continue;
    session_->PressAltAnd(edit.access_key);
    EXPECT_EQ(session_->Focus(), edit.control) << edit.access_key;
  }
}

TEST_P(InstanceDialogTest, HasEachAccessKeyOnceButThoseThatAreKnownToBeShared) {
  std::set<int> keys;
  std::string shared;
  for (const ExpectedControl& control : expected_.controls) {
    const std::size_t mark = control.text.find('&');
    if (mark == std::string::npos) continue;
    const int key = std::tolower(control.text.at(mark + 1));
    if (!keys.insert(key).second) shared += static_cast<char>(key);
  }
  EXPECT_EQ(shared, expected_.shared_access_keys);
}

// How it opens.

TEST_P(PrefilledDialogTest, OpensForANewInstanceWithTheDefaultsValuesAndNoName) {
  StoreSample(L"Default");
  Add();
  EXPECT_EQ(WindowText(session_->dialog()), expected_.add_title);
  for (const ExpectedEdit& edit : expected_.edits) {
    EXPECT_EQ(session_->Text(edit.control), edit.control == NameControl() ? "" : edit.sample);
  }
  EXPECT_EQ(session_->Focus(), NameControl());
  EXPECT_THAT(host_.log_calls, IsEmpty());
}

TEST_P(PrefilledDialogTest, OpensEmptyAndOnlyLogsWhereThereIsNoDefault) {
  Add();
  EXPECT_EQ(WindowText(session_->dialog()), expected_.add_title);
  EXPECT_EQ(session_->popup(), nullptr);
  ExpectUnfilledEdits();
  ExpectFailedLoad(expected_.default_name);
}

TEST_P(InstanceDialogTest, OpensForAnInstanceWithItsNameAndValues) {
  StoreSample(L"night");
  Edit(L"night");
  EXPECT_EQ(WindowText(session_->dialog()), expected_.edit_title);
  for (const ExpectedEdit& edit : expected_.edits) {
    EXPECT_EQ(session_->Text(edit.control), edit.sample);
  }
  EXPECT_THAT(host_.log_calls, IsEmpty());
}

TEST_P(InstanceDialogTest, TellsAndLogsWhenTheInstanceIsMissing) {
  Edit(L"night");
  ExpectMessage("Error loading the instance file");
  EXPECT_EQ(WindowText(session_->dialog()), expected_.failed_edit_title);
  ExpectUnfilledEdits();
  ExpectFailedLoad(L"night");
}

TEST_P(InstanceDialogTest, TellsAndLogsWhenTheInstanceIsAnotherClasss) {
  std::string file = expected_.sample_file;
  file[3] = '!';
  ASSERT_TRUE(std::filesystem::exists(scratch_.Write(L"night", file)));
  Edit(L"night");
  ExpectMessage("Error loading the instance file");
  ExpectUnfilledEdits();
  ExpectFailedLoad(L"night");
}

TEST_P(LimitedDialogTest, TellsAndLogsWhenATextIsTooLong) {
  const std::string file = expected_.sample_file.substr(0, 16) + std::string("\0\4\0\0", 4) +
                           std::string(1023, 'x') + '\0';
  ASSERT_TRUE(std::filesystem::exists(scratch_.Write(L"night", file)));
  Edit(L"night");
  ExpectMessage("Error loading the instance file");
  ExpectFailedLoad(L"night");
}

TEST_P(InstanceDialogTest, TellsAndLogsWhenSomebodyWritesTheInstance) {
  const auto path = scratch_.Write(L"night", expected_.sample_file);
  const Handle writer(CreateFileW(path.c_str(), GENERIC_WRITE, FILE_SHARE_READ, nullptr,
                                  OPEN_EXISTING, 0, nullptr));
  ASSERT_TRUE(writer);
  Edit(L"night");
  ExpectMessage("Error loading the instance file");
  ExpectFailedLoad(L"night");
}

TEST_P(InstanceDialogTest, TellsAndLogsANameThatNoCodePageHolds) {
  Edit(L"\u4E2D\u0416\u05D0");
  ExpectMessage("Error loading the instance file");
  ExpectFailedLoad(L"\u4E2D\u0416\u05D0");
}

// What OK checks.

TEST_P(InstanceDialogTest, WantsANameBeforeAllElse) {
  Add();
  session_->Click(kOk);
  ExpectMessage(expected_.edits.front().missing_message);
  EXPECT_EQ(session_->Focus(), expected_.focus_after_name_error);
}

TEST_P(InstanceDialogTest, RefusesANameThatIsTakenBeforeItLooksAtTheFields) {
  StoreSample(L"night");
  Add();
  AcceptName("night");
  ExpectMessage(kTaken, kTakenCaption);
  EXPECT_EQ(session_->Focus(), expected_.focus_after_name_error);
}

TEST_P(InstanceDialogTest, RefusesANameThatIsTakenWhateverTheLetterCaseAndTheClass) {
  ASSERT_TRUE(std::filesystem::exists(scratch_.Write(L"Night", "of nobody's")));
  Add();
  EnterSamples();
  AcceptName("nIGHT");
  ExpectMessage(kTaken, kTakenCaption);
  EXPECT_THAT(scratch_.Files(), ElementsAre(Pair(L"Night", "of nobody's")));
}

TEST_P(InstanceDialogTest, RefusesDefaultForANameOnlyWhereThereIsOne) {
  Add();
  EnterSamples();
  AcceptName("Default");
  ExpectEnd(S_OK, L"Default");
  EXPECT_THAT(scratch_.Files(), ElementsAre(Pair(L"Default", expected_.sample_file)));
  Add();
  AcceptName("default");
  ExpectMessage(kTaken, kTakenCaption);
}

TEST_P(InstanceDialogTest, WantsItsFieldsInOrder) {
  Add();
  for (const ExpectedEdit& edit : expected_.edits) {
    session_->SetText(edit.control, edit.control == NameControl() ? "night" : "");
  }
  for (const ExpectedEdit& edit : expected_.edits) {
    if (edit.control == NameControl() || edit.missing_message == nullptr) continue;
    session_->Click(kOk);
    ExpectMessage(edit.missing_message);
    EXPECT_EQ(session_->Focus(), edit.control);
    session_->SetText(edit.control, edit.sample);
  }
  EXPECT_THAT(scratch_.Files(), IsEmpty());
  session_->Click(kOk);
  ExpectEnd(S_OK, L"night");
}

TEST_P(InstanceDialogTest, CannotSaveUnderWhatIsNoFileName) {
  Add();
  EnterSamples();
  for (const char* name :
       {"..\\night", "a/b",     "C:night", "night.",      "night ",  "a*b",   "a?b",
        "a\"b",      "a<b",     "a>b",     "a|b",         "..",      ".",     "NUL",
        "com1",      "aux.txt", "COM\xB9", "lpt\xB2.txt", "com\xB3", "clock$"}) {
    AcceptName(name);
    ExpectMessage(kNotSaved);
    EXPECT_NE(session_->dialog(), nullptr) << name;
    EXPECT_EQ(session_->Text(NameControl()), name);
  }
  EXPECT_THAT(scratch_.Files(), IsEmpty());
  EXPECT_FALSE(std::filesystem::exists(scratch_.path().parent_path() / "night"));
  session_->Click(kCancel);
  ExpectCancelled();
}

TEST_P(LimitedDialogTest, LetsNoMoreBeTypedThanCanBeLoadedAgain) {
  Add();
  EXPECT_EQ(SendMessageA(session_->Control(NameControl()), EM_GETLIMITTEXT, 0, 0), 512);
  for (const ExpectedEdit& edit : expected_.edits) {
    if (edit.control == NameControl()) continue;
    EXPECT_EQ(SendMessageA(session_->Control(edit.control), EM_GETLIMITTEXT, 0, 0), 1022);
    session_->SetText(edit.control, std::string(1021, 'x'));
    session_->PressAltAnd(edit.access_key);
    session_->PressKey(VK_END);
    session_->Type("yz");
    EXPECT_EQ(session_->Text(edit.control), std::string(1021, 'x') + 'y');
  }
}

TEST_P(LimitedDialogTest, SavesNoMoreThanCanBeLoadedAgain) {
  Add();
  EnterSamples();
  const int longest = expected_.edits.at(1).control;
  session_->SetText(longest, std::string(1500, 'x'));
  session_->Click(kOk);
  ExpectEnd(S_OK, L"night");
  Edit(L"night");
  EXPECT_EQ(session_->Text(longest), std::string(1022, 'x'));
}

// How it ends.

TEST_P(InstanceDialogTest, SavesWhatWasEnteredAndAnswersTheName) {
  Add();
  EnterSamples();
  session_->Click(kOk);
  ExpectEnd(S_OK, L"night");
  EXPECT_EQ(session_->dialog(), nullptr);
  EXPECT_THAT(scratch_.Files(), ElementsAre(Pair(L"night", expected_.sample_file)));
}

TEST_P(InstanceDialogTest, AnswersANameOfTheCodePage) {
  Add();
  EnterSamples();
  SendMessageW(session_->Control(NameControl()), WM_SETTEXT, 0,
               reinterpret_cast<LPARAM>(L"St\u00F6rung"));
  session_->Click(kOk);
  ExpectEnd(S_OK, L"St\u00F6rung");
  EXPECT_THAT(scratch_.Files(), ElementsAre(Pair(L"St\u00F6rung", expected_.sample_file)));
  Edit(L"St\u00F6rung");
  session_->Click(kOk);
  ExpectEnd(S_OK, L"St\u00F6rung");
}

TEST_P(InstanceDialogTest, TakesEnterForOkAlsoFromAnEdit) {
  Add();
  EnterSamples();
  session_->PressKey(VK_RETURN);
  ExpectEnd(S_OK, L"night");
}

TEST_P(InstanceDialogTest, TakesEnterForTheButtonThatHasTheFocus) {
  Add();
  EnterSamples();
  while (session_->Focus() != kCancel)
    session_->PressKey(VK_TAB);
  session_->PressKey(VK_RETURN);
  ExpectCancelled();
}

TEST_P(InstanceDialogTest, ChangesNothingOnCancelEscapeOrClose) {
  StoreSample(L"Default");
  StoreSample(L"night");
  const auto before = scratch_.Files();
  const std::vector<std::function<void()>> ways = {
      [&] { session_->Click(kCancel); },
      [&] { session_->PressKey(VK_ESCAPE); },
      [&] {
        PostMessageA(session_->dialog(), WM_SYSCOMMAND, SC_CLOSE, 0);
        session_->Settle();
      },
  };
  for (const auto& edited :
       {std::optional<std::wstring>(), std::optional<std::wstring>(L"night")}) {
    for (const auto& way : ways) {
      Open(edited);
      session_->SetText(NameControl(), "changed");
      session_->SetText(expected_.edits.at(1).control, "changed");
      way();
      ExpectCancelled();
      EXPECT_EQ(scratch_.Files(), before);
    }
  }
}

TEST_P(InstanceDialogTest, SavesAnEditedInstanceInItsPlace) {
  StoreSample(L"night");
  Edit(L"night");
  const ExpectedEdit& changed = expected_.edits.back();
  session_->SetText(changed.control, "x");
  session_->Click(kOk);
  ExpectEnd(S_OK, L"night");
  EXPECT_THAT(scratch_.Files(), ElementsAre(Pair(L"night", ::testing::Ne(expected_.sample_file))));
  Edit(L"night");
  session_->SetText(changed.control, changed.sample);
  session_->Click(kOk);
  ExpectEnd(S_OK, L"night");
  EXPECT_THAT(scratch_.Files(), ElementsAre(Pair(L"night", expected_.sample_file)));
}

TEST_P(InstanceDialogTest, RenamesAnInstance) {
  StoreSample(L"night");
  Edit(L"night");
  AcceptName("day");
  ExpectEnd(S_OK, L"day");
  EXPECT_THAT(scratch_.Files(), ElementsAre(Pair(L"day", expected_.sample_file)));
}

TEST_P(InstanceDialogTest, RenamesAnInstanceByLetterCaseAlone) {
  StoreSample(L"\u00FCber");
  Edit(L"\u00FCber");
  AcceptName(
      "\xDC"
      "BER");
  ExpectEnd(S_OK, L"\u00DCBER");
  EXPECT_THAT(scratch_.Files(), ElementsAre(Pair(L"\u00DCBER", expected_.sample_file)));
}

TEST_P(InstanceDialogTest, AnswersTheNameThatStandsInTheDirectory) {
  StoreSample(L"Night");
  Edit(L"nIGHT");
  session_->Click(kOk);
  ExpectEnd(S_OK, L"Night");
  EXPECT_THAT(scratch_.Files(), ElementsAre(Pair(L"Night", expected_.sample_file)));
}

// The file system tells these apart, whatever dictionaries say.
TEST_P(InstanceDialogTest, RefusesATakenNameThatIsLikeItsOwnInDictionaries) {
  const std::tuple<const wchar_t*, const wchar_t*, const char*> names[] = {
      {L"Strasse", L"Stra\u00DFe", "Stra\xDF\x65"},
      {L"aegir", L"\u00E6gir", "\xE6gir"},
      {L"oeuf", L"\u0153uf", "\x9Cuf"},
      {L"thing", L"\u00FEing", "\xFEing"},
      {L"coop", L"co\u00ADop", "co\xADop"},
  };
  for (const auto& [edited, other, typed] : names) {
    StoreSample(edited);
    ASSERT_TRUE(std::filesystem::exists(scratch_.Write(other, "another")));
    const auto before = scratch_.Files();
    Edit(edited);
    AcceptName(typed);
    ExpectMessage(kTaken, kTakenCaption);
    EXPECT_EQ(scratch_.Files(), before);
    session_->Click(kCancel);
    ExpectCancelled();
  }
}

TEST_P(InstanceDialogTest, KeepsBothFilesWhenTheNewNameIsTaken) {
  StoreSample(L"night");
  ASSERT_TRUE(std::filesystem::exists(scratch_.Write(L"day", "another")));
  Edit(L"night");
  AcceptName("day");
  ExpectMessage(kTaken, kTakenCaption);
  EXPECT_THAT(scratch_.Files(),
              ElementsAre(Pair(L"day", "another"), Pair(L"night", expected_.sample_file)));
}

TEST_P(InstanceDialogTest, StaysOpenWhileSomebodyReadsTheFile) {
  const auto path = scratch_.Write(L"night", expected_.sample_file);
  Edit(L"night");
  session_->SetText(expected_.edits.back().control, "x");
  {
    const Handle reader(CreateFileW(path.c_str(), GENERIC_READ, FILE_SHARE_READ, nullptr,
                                    OPEN_EXISTING, 0, nullptr));
    ASSERT_TRUE(reader);
    session_->Click(kOk);
    ExpectMessage(kNotSaved);
  }
  EXPECT_THAT(scratch_.Files(), ElementsAre(Pair(L"night", expected_.sample_file)));
  session_->Click(kOk);
  ExpectEnd(S_OK, L"night");
  EXPECT_THAT(scratch_.Files(), ElementsAre(Pair(L"night", ::testing::Ne(expected_.sample_file))));
}

TEST_P(InstanceDialogTest, StaysOpenWhenTheDirectoryIsGone) {
  DialogSession session(module_, {.notifier_class = expected_.notifier_class,
                                  .directory = (scratch_.path() / L"none").wstring()});
  for (const ExpectedEdit& edit : expected_.edits) {
    session.SetText(edit.control, edit.sample);
  }
  session.Click(kOk);
  EXPECT_EQ(session.ReadMessageBox(), MessageBoxContent{.text = kNotSaved});
  session.CloseMessageBox();
  session.Click(kCancel);
  EXPECT_EQ(session.Await().result, E_FAIL);
  EXPECT_THAT(scratch_.Files(), IsEmpty());
}

TEST_P(InstanceDialogTest, DeletesNoFileThatItCouldNotLoad) {
  ASSERT_TRUE(std::filesystem::exists(scratch_.Write(L"night", "another class's")));
  Edit(L"night");
  ExpectMessage("Error loading the instance file");
  EnterSamples();
  AcceptName("day");
  ExpectEnd(S_OK, L"day");
  EXPECT_THAT(scratch_.Files(),
              ElementsAre(Pair(L"day", expected_.sample_file), Pair(L"night", "another class's")));
}

TEST_P(InstanceDialogTest, OverwritesNoFileThatIsAnotherClasss) {
  const std::string file = "another class's";
  ASSERT_TRUE(std::filesystem::exists(scratch_.Write(L"night", file)));
  Edit(L"night");
  ExpectMessage("Error loading the instance file");
  EnterSamples();
  for (const char* name : {"night", "NIGHT"}) {
    AcceptName(name);
    ExpectMessage(kTaken, kTakenCaption);
  }
  EXPECT_THAT(scratch_.Files(), ElementsAre(Pair(L"night", file)));
}

TEST_P(InstanceDialogTest, MendsADamagedFileOfItsClass) {
  const std::string file = expected_.sample_file.substr(0, 16) + std::string("\0\4\0\0", 4);
  ASSERT_TRUE(std::filesystem::exists(scratch_.Write(L"night", file)));
  Edit(L"night");
  ExpectMessage("Error loading the instance file");
  EnterSamples();
  AcceptName("night");
  ExpectEnd(S_OK, L"night");
  EXPECT_THAT(scratch_.Files(), ElementsAre(Pair(L"night", expected_.sample_file)));
}

TEST_P(InstanceDialogTest, FreesTheNameThatItReplacesAndLosesNoOther) {
  StoreSample(L"night");
  Edit(L"night");
  session_->Click(kOk);
  ExpectEnd(S_OK, L"night");  // the system has now made what it makes once
  session_.reset();

  const AllocationBalance balance;
  Edit(L"night");
  session_->Click(kOk);
  ExpectEnd(S_OK, L"night");
  session_.reset();
  EXPECT_EQ(balance.Outstanding(), 0);
  EXPECT_EQ(balance.StrayFrees(), 0);
}

TEST_P(InstanceDialogTest, GivesTheHostTheNameOfANewInstanceAndNothingElse) {
  const auto add = [&](const char* name, const wchar_t* wide_name) {
    Add();
    EnterSamples();
    AcceptName(name);
    ExpectEnd(S_OK, wide_name);
    session_.reset();  // frees the name
  };
  add("dusk", L"dusk");  // the system has now made what it makes once

  const AllocationBalance balance;
  add("night", L"night");
  EXPECT_EQ(balance.Outstanding(), 0);
  EXPECT_EQ(balance.StrayFrees(), 0);
}

// Help.

TEST_P(InstanceDialogTest, ShowsItsHelpForTheButtonAndTheContextHelpKey) {
  HelpViewer viewer;
  const auto& context = expected_.help_context;
  const unsigned command = context ? HELP_CONTEXT : HELP_CONTENTS;
  const HelpRequest wanted = {"vantrel.hlp", command, context.value_or(0)};
  Add();
  session_->Click(expected_.help_button);
  EXPECT_THAT(viewer.requests(), ElementsAre(wanted));
  PostMessageA(session_->Control(session_->Focus()), kContextHelpKey, 0, 0);
  session_->Settle();
  EXPECT_THAT(viewer.requests(), ElementsAre(wanted, wanted));
  EXPECT_NE(session_->dialog(), nullptr);
}

}  // namespace
}  // namespace brantel
