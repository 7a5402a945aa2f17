#include "web/web_forms.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "beeper/beeper_description.h"
#include "instance/instance_codec.h"
#include "pager/pager_description.h"
#include "smtp_mail/smtp_mail_description.h"
#include "tests/unit/instance/fake_instance_files.h"
#include "tests/unit/notifier/fake_notifier_host.h"
#include "tests/unit/project_file.h"
#include "tests/unit/text/few_code_pages.h"
#include "win_popup/win_popup_description.h"

namespace brantel {
namespace {

using namespace std::string_literals;
using ::testing::Contains;
using ::testing::ElementsAre;
using ::testing::HasSubstr;
using ::testing::IsEmpty;
using ::testing::Key;
using ::testing::Not;
using ::testing::UnorderedElementsAre;

const std::string kDirectory = "C:\\alerts";

std::string PathOf(const std::string& name) {
  return kDirectory + "\\" + name;
}

// An instance with these texts, in file order.
Instance TextInstance(const InstanceLayout& layout, const std::vector<std::string>& texts) {
  Instance instance(layout.fields.size());
  for (std::size_t i = 0; i < texts.size(); ++i)
    instance.set_text(i, texts[i]);
  return instance;
}

Instance BeeperInstance(const std::vector<std::string>& texts, std::int32_t profile) {
  Instance instance = TextInstance(kBeeper.instances, texts);
  instance.set_integer(beeper_field::kSettingsProfile, profile);
  return instance;
}

class WebFormsOf : public ::testing::Test {
 protected:
  explicit WebFormsOf(const ClassDescription& notifier_class) : class_(notifier_class) {}

  void Store(const std::string& name, const Instance& instance) {
    files_.files[PathOf(name)] = EncodeInstance(class_.instances, instance);
  }

  [[nodiscard]] std::optional<Instance> Stored(const std::string& name) const {
    const auto file = files_.files.find(PathOf(name));
    if (file == files_.files.end()) return std::nullopt;
    return DecodeInstance(class_.instances, file->second);
  }

  std::string AddPage() { return std::string(forms_.AddPage(kDirectory, &host_).view()); }

  std::optional<std::string> EditPage(const std::string& name) {
    const std::string path = PathOf(name);
    const auto page =
        forms_.EditPage({std::u16string(path.begin(), path.end()), path}, name, &host_);
    if (!page) return std::nullopt;
    return std::string(page->view());
  }

  Result Submit(const std::string& form) { return forms_.SubmitForm(kDirectory, form); }

  const ClassDescription& class_;
  FakeInstanceFiles files_;
  FakeNotifierHost host_;
  WebForms forms_{files_, class_, kCodePage1252};
};

class BeeperForms : public WebFormsOf {
 protected:
  BeeperForms() : WebFormsOf(kBeeper) {}
};
class PagerForms : public WebFormsOf {
 protected:
  PagerForms() : WebFormsOf(kPager) {}
};
class SmtpMailForms : public WebFormsOf {
 protected:
  SmtpMailForms() : WebFormsOf(kSMTPMail) {}
};
class WinPopupForms : public WebFormsOf {
 protected:
  WinPopupForms() : WebFormsOf(kWinPopup) {}
};

// A value with a quote stands on the add page as it is stored and on the edit page escaped.
TEST_F(BeeperForms, PrefillTheAddPageFromDefault) {
  Store("Default",
        BeeperInstance({"555-0199", "", "11*\"up\"", "12<down>", "13&trap", "report"}, 0));

  EXPECT_EQ(AddPage(), GoldenFile("beeper_add_page.html"));
  EXPECT_THAT(files_.calls, ElementsAre("read " + PathOf("Default")));
  EXPECT_THAT(host_.calls, IsEmpty());
}

TEST_F(BeeperForms, ShowTheInstanceOnTheEditPage) {
  Store("Night shift",
        BeeperInstance({"555-0199", "", "11*\"up\"", "12<down>", "13&trap", "report"}, 0));

  EXPECT_EQ(EditPage("Night shift"), GoldenFile("beeper_edit_page.html"));
  EXPECT_THAT(files_.calls, ElementsAre("read " + PathOf("Night shift")));
  EXPECT_THAT(host_.calls, IsEmpty());
}

TEST_F(BeeperForms, BuildAnEmptyAddPageWithoutDefaultAndTellTheHost) {
  EXPECT_EQ(AddPage(), GoldenFile("beeper_add_page_without_default.html"));
  EXPECT_THAT(host_.log,
              ElementsAre("Default Beeper", " - Failed to load notification from disk.", "\r"));
}

TEST_F(BeeperForms, BuildTheSameAddPageWithoutAHost) {
  EXPECT_EQ(forms_.AddPage(kDirectory, nullptr).view(),
            GoldenFile("beeper_add_page_without_default.html"));
}

TEST_F(BeeperForms, TakeNothingFromADefaultThatCannotBeRead) {
  const std::string whole = EncodeInstance(kBeeper.instances, BeeperInstance({"555-0199"}, 0));
  const std::string garbled[] = {
      "", whole.substr(0, 15),
      EncodeInstance(kPager.instances, Instance(kPager.instances.fields.size())),
      // The first field can be read, the length of the second one is too large.
      whole.substr(0, 16) + "\x05\0\0\0"s + "1234\0"s + "\0\x04\0\0"s};
  for (const std::string& file : garbled) {
    files_.files[PathOf("Default")] = file;
    host_.log.clear();
    EXPECT_EQ(AddPage(), GoldenFile("beeper_add_page_without_default.html"));
    EXPECT_THAT(host_.log,
                ElementsAre("Default Beeper", " - Failed to load notification from disk.", "\r"));
  }
}

TEST_F(BeeperForms, HaveNoEditPageOfAMissingInstanceAndTellTheHost) {
  EXPECT_EQ(EditPage("Night shift"), std::nullopt);
  EXPECT_THAT(host_.log, ElementsAre("C:\\alerts\\Night shift",
                                     " - Failed to load notification from disk.", "\r"));
}

TEST_F(BeeperForms, HaveNoEditPageOfAnotherClasssInstance) {
  files_.files[PathOf("Night shift")] =
      EncodeInstance(kPager.instances, Instance(kPager.instances.fields.size()));

  EXPECT_EQ(EditPage("Night shift"), std::nullopt);
  EXPECT_EQ(host_.log.size(), 3U);
}

TEST_F(BeeperForms, HaveNoEditPageOfAMissingInstanceWithoutAHostEither) {
  EXPECT_FALSE(forms_.EditPage({u"C:\\alerts\\x", "C:\\alerts\\x"}, "x", nullptr));
}

TEST_F(BeeperForms, LogThePathAsItCame) {
  EXPECT_FALSE(forms_.EditPage({u"no path at all\\", "no path at all\\"}, "", &host_));
  EXPECT_THAT(host_.log,
              ElementsAre("no path at all\\", " - Failed to load notification from disk.", "\r"));
}

TEST_F(BeeperForms, AddAnInstance) {
  EXPECT_EQ(Submit("page=notify&origname=&action=return&type=Beeper&instancename=Day+shift&"
                   "beepernumber=555+0100&upcode=1&downcode=2&trapcode=3&reportmessage=%25C+it&"
                   "end=end"),
            kOk);
  EXPECT_EQ(Stored("Day shift"), BeeperInstance({"555 0100", "", "1", "2", "3", "%25C it"}, 0));
  EXPECT_THAT(host_.calls, IsEmpty());
}

TEST_F(BeeperForms, AddAnInstanceOfAFormWithoutOriginalName) {
  EXPECT_EQ(Submit("instancename=Day&upcode=1"), kOk);
  EXPECT_EQ(Stored("Day"), BeeperInstance({"", "", "1"}, 0));
}

TEST_F(BeeperForms, ReplaceAnInstanceThatIsAddedAgain) {
  Store("Day", BeeperInstance({"1", "2", "3", "4", "5", "6"}, 7));

  EXPECT_EQ(Submit("origname=&instancename=Day&upcode=1"), kOk);
  EXPECT_EQ(Stored("Day"), BeeperInstance({"", "", "1"}, 0));
}

TEST_F(BeeperForms, EditAnInstanceInPlace) {
  Store("Day", BeeperInstance({"1", "2", "3", "4", "5", "6"}, 0));

  EXPECT_EQ(Submit("origname=Day&beepernumber=a&upcode=b&downcode=c&trapcode=d&reportmessage=e"),
            kOk);
  EXPECT_EQ(Stored("Day"), BeeperInstance({"a", "2", "b", "c", "d", "e"}, 0));
  EXPECT_THAT(files_.calls, ElementsAre("read " + PathOf("Day"), "write " + PathOf("Day")));
}

// The disabled input of the edit page is not posted, and what is posted in its place is not used.
TEST_F(BeeperForms, EditUnderTheOriginalNameWhateverTheInstanceNameSays) {
  EXPECT_EQ(Submit("origname=Day&instancename=Night&upcode=b"), kOk);
  EXPECT_THAT(files_.files, ElementsAre(Key(PathOf("Day"))));
}

TEST_F(BeeperForms, CreateAnEditedInstanceWhoseFileIsGone) {
  EXPECT_EQ(Submit("origname=Day&upcode=1"), kOk);
  EXPECT_EQ(Stored("Day"), BeeperInstance({"", "", "1"}, 0));
}

TEST_F(BeeperForms, DecodePlusSignsAlone) {
  EXPECT_EQ(Submit("origname=Day&upcode=a+b%20c"), kOk);
  EXPECT_EQ(Stored("Day")->text(beeper_field::kUpCode), "a b%20c");
}

TEST_F(BeeperForms, SaveFieldsThatAreMissingAsEmpty) {
  Store("Day", BeeperInstance({"1", "2", "3", "4", "5", "6"}, 0));

  EXPECT_EQ(Submit("origname=Day"), kOk);
  EXPECT_EQ(Stored("Day"), BeeperInstance({"", "2"}, 0));
}

TEST_F(BeeperForms, EndValuesAtLineBreaks) {
  EXPECT_EQ(Submit("origname=Day&beepernumber=1\r\n2&upcode=3\n4&trapcode=5\r&reportmessage=6\r\n"),
            kOk);
  EXPECT_EQ(Stored("Day"), BeeperInstance({"1", "", "3", "", "5", "6"}, 0));
}

TEST_F(BeeperForms, EndTheFormAtANul) {
  EXPECT_EQ(Submit("origname=Day&beepernumber=12\00034&upcode=5"s), kOk);
  EXPECT_EQ(Stored("Day"), BeeperInstance({"12"}, 0));
}

TEST_F(BeeperForms, RenameAnInstance) {
  Store("old", BeeperInstance({"1", "2", "3", "4", "5", "6"}, 0));

  EXPECT_EQ(Submit("origname=new/old&beepernumber=9"), kOk);
  EXPECT_THAT(files_.files, ElementsAre(Key(PathOf("new"))));
  EXPECT_EQ(Stored("new"), BeeperInstance({"9", "2"}, 0));
  EXPECT_THAT(files_.calls, ElementsAre("read " + PathOf("old"), "delete " + PathOf("old"),
                                        "write " + PathOf("new")));
}

TEST_F(BeeperForms, RenameAnInstanceWhoseFileIsGone) {
  EXPECT_EQ(Submit("origname=new/old&beepernumber=9"), kOk);
  EXPECT_EQ(Stored("new"), BeeperInstance({"9"}, 0));
}

TEST_F(BeeperForms, RenameAnInstanceWhoseFileCannotBeDeleted) {
  Store("old", BeeperInstance({"1"}, 0));
  files_.held.insert(PathOf("old"));

  EXPECT_EQ(Submit("origname=new/old&beepernumber=9"), kOk);
  EXPECT_EQ(Stored("new"), BeeperInstance({"9"}, 0));
  EXPECT_EQ(Stored("old"), BeeperInstance({"1"}, 0));
}

TEST_F(BeeperForms, RenameOverAnotherInstance) {
  Store("old", BeeperInstance({"1", "old options"}, 0));
  Store("new", BeeperInstance({"5", "new options"}, 0));

  EXPECT_EQ(Submit("origname=new/old&beepernumber=9"), kOk);
  EXPECT_THAT(files_.files, ElementsAre(Key(PathOf("new"))));
  EXPECT_EQ(Stored("new"), BeeperInstance({"9", "old options"}, 0));
}

TEST_F(BeeperForms, TakeAnEmptySecondNameForNone) {
  Store("new", BeeperInstance({"1", "options"}, 0));

  EXPECT_EQ(Submit("origname=new/&beepernumber=9"), kOk);
  EXPECT_EQ(Stored("new"), BeeperInstance({"9", "options"}, 0));
  EXPECT_THAT(files_.calls, Not(Contains(HasSubstr("delete"))));
}

TEST_F(BeeperForms, TakeTwoNamesAtMost) {
  Store("old", BeeperInstance({"1", "options"}, 0));
  Store("older", BeeperInstance({"2"}, 0));

  EXPECT_EQ(Submit("origname=new/old/older&beepernumber=9"), kOk);
  EXPECT_EQ(Stored("new"), BeeperInstance({"9", "options"}, 0));
  EXPECT_EQ(Stored("old"), std::nullopt);
  EXPECT_EQ(Stored("older"), BeeperInstance({"2"}, 0));
}

TEST_F(BeeperForms, DeleteNothingWhenARenameNamesTheSameFileTwice) {
  Store("Day", BeeperInstance({"1", "options"}, 0));

  EXPECT_EQ(Submit("origname=Day/Day&beepernumber=9"), kOk);
  EXPECT_EQ(Stored("Day"), BeeperInstance({"9", "options"}, 0));
  EXPECT_THAT(files_.calls, ElementsAre("read " + PathOf("Day"), "write " + PathOf("Day")));
}

TEST_F(BeeperForms, GiveTheFileItsNewLettersWhenARenameChangesTheirCaseAlone) {
  Store("\xE6gir", BeeperInstance({"1", "options"}, 0));

  EXPECT_EQ(Submit("origname=\xC6Gir/\xE6gir&beepernumber=9"), kOk);
  EXPECT_THAT(files_.files, ElementsAre(Key(PathOf("\xC6Gir"))));
  EXPECT_EQ(Stored("\xC6Gir"), BeeperInstance({"9", "options"}, 0));
  EXPECT_THAT(files_.calls, Not(Contains(HasSubstr("delete"))));
}

// The file system tells these apart, whatever dictionaries say.
TEST_F(BeeperForms, RenameBetweenNamesThatAreAlikeInDictionaries) {
  const std::string pairs[][2] = {{"Stra\xDF"
                                   "e",
                                   "Strasse"},
                                  {"\xC6gir", "Aegir"},
                                  {"\x9Cuf", "oeuf"},
                                  {"\xFEing", "thing"},
                                  {"co\xADop", "coop"}};
  for (const auto& [name, old_name] : pairs) {
    files_.files.clear();
    Store(old_name, BeeperInstance({"1", "options"}, 0));
    EXPECT_EQ(Submit("origname=" + name + "/" + old_name + "&beepernumber=9"), kOk);
    EXPECT_THAT(files_.files, ElementsAre(Key(PathOf(name))));
    EXPECT_EQ(Stored(name), BeeperInstance({"9", "options"}, 0));
  }
}

TEST_F(BeeperForms, LeaveAFileWholeThatCannotBeSavedInOtherLetters) {
  Store("day", BeeperInstance({"1", "options"}, 0));
  files_.held.insert(PathOf("day"));

  EXPECT_EQ(Submit("origname=DAY/day&beepernumber=9"), kFail);
  EXPECT_THAT(files_.files, ElementsAre(Key(PathOf("day"))));
  EXPECT_EQ(Stored("day"), BeeperInstance({"1", "options"}, 0));
}

TEST_F(BeeperForms, RenameAFileThatAShortNameLeadsTo) {
  Store("Night shift", BeeperInstance({"1", "options"}, 0));
  files_.short_paths[PathOf("NIGHTS~1")] = PathOf("Night shift");

  EXPECT_EQ(Submit("origname=Night shift/NIGHTS~1&beepernumber=9"), kOk);
  EXPECT_THAT(files_.files, ElementsAre(Key(PathOf("Night shift"))));
  EXPECT_EQ(Stored("Night shift"), BeeperInstance({"9", "options"}, 0));
}

TEST_F(BeeperForms, KeepTheFileWhenItCannotBeSavedUnderTheSameName) {
  const Instance before = BeeperInstance({"1", "options"}, 0);
  Store("Day", before);
  files_.held.insert(PathOf("Day"));

  EXPECT_EQ(Submit("origname=Day&beepernumber=9"), kFail);
  EXPECT_EQ(Submit("origname=Day/Day&beepernumber=9"), kFail);
  EXPECT_EQ(Submit("origname=&instancename=Day&beepernumber=9"), kFail);
  EXPECT_EQ(Stored("Day"), before);
}

TEST_F(BeeperForms, HaveDeletedTheOldFileWhenARenameCannotBeSaved) {
  Store("old", BeeperInstance({"1"}, 0));
  Store("new", BeeperInstance({"2"}, 0));
  files_.held.insert(PathOf("new"));

  EXPECT_EQ(Submit("origname=new/old&beepernumber=9"), kFail);
  EXPECT_EQ(Stored("old"), std::nullopt);
  EXPECT_EQ(Stored("new"), BeeperInstance({"2"}, 0));
}

TEST_F(BeeperForms, RefuseATextThatCouldNotBeLoadedAgain) {
  Store("old", TextInstance(kBeeper.instances, {"1", "2", "3", "4", "5"}));
  const auto files = files_.files;
  EXPECT_EQ(forms_.SubmitForm(kDirectory, "origname=new/old&upcode=" + std::string(1023, 'x')),
            kFail);
  EXPECT_EQ(files_.files, files);
  EXPECT_EQ(forms_.SubmitForm(kDirectory, "origname=new/old&upcode=" + std::string(1022, 'x')),
            kOk);
  EXPECT_EQ(Stored("new")->text(beeper_field::kUpCode), std::string(1022, 'x'));
}

TEST_F(BeeperForms, RefuseNamesThatNoFileInTheDirectoryMayHave) {
  Store("old", BeeperInstance({"1"}, 0));
  const auto before = files_.files;
  for (const std::string name :
       {"..\\up", "a\\b", "C:up", ".", "..", "a*", "what?", "\"a\"", "a<b", "a>b", "a|b", "NUL",
        "com1.txt", "COM\xB9", "clock$", "end.", "end+"}) {
    for (const std::string& form :
         {"origname=&instancename=" + name, "origname=" + name, "origname=" + name + "/old",
          "origname=new/" + name, "origname=" + name + "/"}) {
      EXPECT_EQ(Submit(form + "&beepernumber=9"), kFail) << form;
    }
  }
  for (const std::string form :
       {"", "beepernumber=9", "origname=&instancename=", "origname=/", "origname=/old",
        "origname=&instancename=a/b", "instancename=\r\nDay"}) {
    EXPECT_EQ(Submit(form), kFail) << form;
  }
  EXPECT_EQ(files_.files, before);
  EXPECT_THAT(files_.calls, IsEmpty());
}

TEST_F(BeeperForms, KeepTheDialingOptionsOfDefaultInANewInstance) {
  Store("Default", BeeperInstance({"1", "ATDT%s", "3", "4", "5", "6"}, 3));

  EXPECT_EQ(Submit("origname=&instancename=Day&upcode=9"), kOk);
  EXPECT_EQ(Stored("Day"), BeeperInstance({"", "ATDT%s", "9"}, 0));
}

TEST_F(BeeperForms, SaveProfile0BeforeAnyPage) {
  Store("Day", BeeperInstance({"1", "2", "3", "4", "5", "6"}, 4));

  EXPECT_EQ(Submit("origname=Day&upcode=9"), kOk);
  EXPECT_EQ(Stored("Day")->integer(beeper_field::kSettingsProfile), 0);
}

class RememberedProfile : public BeeperForms {
 protected:
  RememberedProfile() {
    Store("Default", BeeperInstance({"1"}, 2));
    Store("Day", BeeperInstance({"1"}, 10));
    Store("Night", BeeperInstance({"1"}, 5));
  }

  std::int32_t SavedProfile() {
    EXPECT_EQ(Submit("origname=&instancename=saved"), kOk);
    return Stored("saved")->integer(beeper_field::kSettingsProfile);
  }
};

TEST_F(RememberedProfile, IsThatOfTheEditPage) {
  ASSERT_TRUE(EditPage("Day"));
  EXPECT_EQ(SavedProfile(), 10);
}

TEST_F(RememberedProfile, IsThatOfTheAddPage) {
  AddPage();
  EXPECT_EQ(SavedProfile(), 2);
}

TEST_F(RememberedProfile, IsThatOfTheLastPage) {
  ASSERT_TRUE(EditPage("Day"));
  ASSERT_TRUE(EditPage("Night"));
  EXPECT_EQ(SavedProfile(), 5);
  AddPage();
  EXPECT_EQ(SavedProfile(), 2);
}

TEST_F(RememberedProfile, ServesEverySubmitUntilTheNextPage) {
  ASSERT_TRUE(EditPage("Night"));
  EXPECT_EQ(SavedProfile(), 5);
  EXPECT_EQ(SavedProfile(), 5);
}

TEST_F(RememberedProfile, StaysWhenThereIsNoPage) {
  ASSERT_TRUE(EditPage("Night"));
  ASSERT_FALSE(EditPage("missing"));
  EXPECT_EQ(SavedProfile(), 5);
}

TEST_F(RememberedProfile, Is0AfterAnAddPageWithoutDefault) {
  ASSERT_TRUE(EditPage("Night"));
  files_.files.erase(PathOf("Default"));
  AddPage();
  EXPECT_EQ(SavedProfile(), 0);
}

TEST_F(RememberedProfile, BelongsToTheOneObject) {
  WebForms other(files_, kBeeper, kCodePage1252);
  ASSERT_TRUE(EditPage("Night"));
  EXPECT_EQ(other.SubmitForm(kDirectory, "origname=Day"), kOk);
  EXPECT_EQ(Stored("Day")->integer(beeper_field::kSettingsProfile), 0);
}

TEST_F(PagerForms, SaveTheFiveFieldsAndTheProfile) {
  Instance stored = TextInstance(kPager.instances, {"1", "2", "3", "4", "NTT"});
  stored.set_integer(pager_field::kSettingsProfile, 1);
  Store("Day", stored);

  ASSERT_TRUE(EditPage("Day"));
  EXPECT_EQ(Submit("page=notify&origname=Day&action=return&type=Pager&pagernumber=a+1&password=b&"
                   "pagerid=c&message=%25C&protocol=UCP-SMS&end=end"),
            kOk);
  Instance expected = TextInstance(kPager.instances, {"a 1", "b", "c", "%25C", "UCP-SMS"});
  expected.set_integer(pager_field::kSettingsProfile, 1);
  EXPECT_EQ(Stored("Day"), expected);
}

TEST_F(PagerForms, GiveANewInstanceTheProfileOfThePageShownLastElseProfile0) {
  const std::string form = "origname=&instancename=New&pagernumber=1&protocol=NTT";
  const auto stored_profile = [&] { return Stored("New")->integer(pager_field::kSettingsProfile); };
  Instance of_default(6);
  of_default.set_integer(pager_field::kSettingsProfile, 2);
  Store("Default", of_default);
  Instance of_day(6);
  of_day.set_integer(pager_field::kSettingsProfile, 10);
  Store("Day", of_day);

  EXPECT_EQ(Submit(form), kOk);
  EXPECT_EQ(stored_profile(), 0) << "no page yet";
  AddPage();
  EXPECT_EQ(Submit(form), kOk);
  EXPECT_EQ(stored_profile(), 2);
  ASSERT_TRUE(EditPage("Day"));
  EXPECT_EQ(Submit(form), kOk);
  EXPECT_EQ(stored_profile(), 10);
  files_.files.erase(PathOf("Default"));
  AddPage();
  EXPECT_EQ(Submit(form), kOk);
  EXPECT_EQ(stored_profile(), 0) << "the page of no instance";
}

TEST_F(PagerForms, SaveAProtocolAsItIsPosted) {
  for (const char* const protocol : {"", "tap", "SMS", "UCP-SMS "}) {
    const std::string text = protocol;
    EXPECT_EQ(Submit("origname=Day&pagernumber=1&protocol=" + text), kOk);
    EXPECT_EQ(Stored("Day")->text(pager_field::kProtocol), text);
  }
}

TEST_F(PagerForms, CallTheMissingDefaultByTheBeepersName) {
  EXPECT_EQ(AddPage(), GoldenFile("pager_add_page_without_default.html"));
  EXPECT_THAT(host_.log,
              ElementsAre("Default Beeper", " - Failed to load notification from disk.", "\r"));
}

TEST_F(PagerForms, StartTheAddPageFromDefaultWithItsProtocol) {
  Store("Default", TextInstance(kPager.instances,
                                {"+44 20 7946 0958", "se\"cret", "12<34>5", "%C & more", "NTT"}));
  EXPECT_EQ(AddPage(), GoldenFile("pager_add_page.html"));
}

TEST_F(SmtpMailForms, KeepTheLineBreaksOfTheMessageAlone) {
  EXPECT_EQ(Submit("origname=&instancename=Day&gateway=192.0.2.25\r\n&to=a\r\nb&from=nobody&"
                   "subject=c\nd&message=one\r\n\r\ntwo+three\n&end=end"),
            kOk);
  EXPECT_EQ(Stored("Day"), TextInstance(kSMTPMail.instances, {"192.0.2.25", "a", "nobody", "c",
                                                              "one\r\n\r\ntwo three\n"}));
}

TEST_F(SmtpMailForms, CallTheMissingDefaultByItsNameAndEndTheLogLine) {
  EXPECT_EQ(AddPage(), GoldenFile("smtp_mail_add_page_without_default.html"));
  EXPECT_THAT(host_.log,
              ElementsAre("Default SMTPMail", " - Failed to load notification from disk.", "\r\n"));
}

TEST_F(SmtpMailForms, HaveNoEditPageOfAFileThatEndsEarly) {
  Store("Day", TextInstance(kSMTPMail.instances, {"1", "2", "3", "4", "5"}));
  files_.files[PathOf("Day")].pop_back();

  EXPECT_EQ(EditPage("Day"), std::nullopt);
  EXPECT_THAT(host_.log,
              ElementsAre("C:\\alerts\\Day", " - Failed to load notification from disk.", "\r\n"));
}

TEST_F(SmtpMailForms, CreateAnEditedInstanceWhoseFileIsGone) {
  EXPECT_EQ(Submit("origname=Day&gateway=1"), kOk);
  EXPECT_EQ(Submit("origname=new/old&gateway=2"), kOk);
  EXPECT_THAT(files_.files, UnorderedElementsAre(Key(PathOf("Day")), Key(PathOf("new"))));
}

TEST_F(WinPopupForms, SaveBothFields) {
  EXPECT_EQ(Submit("origname=&instancename=Day&destination=NIGHTPC&message=it+is\r\ndown"), kOk);
  EXPECT_EQ(Stored("Day"), TextInstance(kWinPopup.instances, {"NIGHTPC", "it is"}));
}

TEST_F(WinPopupForms, CallTheMissingDefaultByItsName) {
  EXPECT_EQ(AddPage(), GoldenFile("win_popup_add_page_without_default.html"));
  EXPECT_THAT(host_.log,
              ElementsAre("Default WinPopup", " - Failed to load notification from disk.", "\r\n"));
}

TEST_F(WinPopupForms, ShowTextsOfAnyLength) {
  const std::string long_text(5000, 'x');
  Store("Day", TextInstance(kWinPopup.instances, {"NIGHTPC", long_text}));
  EXPECT_THAT(*EditPage("Day"), HasSubstr("value=\"" + long_text + "\""));
}

TEST_F(WinPopupForms, HaveNoEditPageOfAFileThatEndsEarly) {
  Store("Day", TextInstance(kWinPopup.instances, {"NIGHTPC", "down"}));
  files_.files[PathOf("Day")].pop_back();

  EXPECT_EQ(EditPage("Day"), std::nullopt);
  EXPECT_THAT(host_.log,
              ElementsAre("C:\\alerts\\Day", " - Failed to load notification from disk.", "\r\n"));
}

// A lead byte before the closing quote would take it for its second byte, and the rest of the page
// with it.
TEST_F(WinPopupForms, DropHalfACharacterAtTheEndOfAValue) {
  Store("Day", TextInstance(kWinPopup.instances, {"a\x83\x5C\x83", "\x81\x81"}));
  WebForms forms(files_, kWinPopup, kCodePage932);
  const auto page = forms.EditPage({u"C:\\alerts\\Day", PathOf("Day")}, "Day", nullptr);
  ASSERT_TRUE(page);
  EXPECT_THAT(std::string(page->view()), HasSubstr("value=\"a\x83\x5C\""));
  EXPECT_THAT(std::string(page->view()), HasSubstr("value=\"\x81\x81\""));
}

}  // namespace
}  // namespace brantel
