#include <windows.h>
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <map>
#include <ostream>
#include <stdexcept>
#include <string>
#include <vector>

#include "system/windows/bstr_win32.h"
#include "system/windows/handle_win32.h"
#include "tests/module/allocation_ledger.h"
#include "tests/module/expected_classes.h"
#include "tests/module/import_patch.h"
#include "tests/module/instance_bytes.h"
#include "tests/module/loaded_module.h"
#include "tests/module/recording_host.h"
#include "tests/module/scratch_directory.h"
#include "tests/unit/project_file.h"

namespace brantel {
namespace {

using namespace std::string_literals;
using ::testing::ElementsAre;
using ::testing::HasSubstr;
using ::testing::IsEmpty;
using ::testing::ValuesIn;

constexpr const wchar_t* kReason = L" - Failed to load notification from disk.";

// The four classes with what a form of each stands for.
struct FormCase {
  const ExpectedClass& expected;
  const char* golden_stem;
  std::string magic;
  // What instances hold, in file order, and what follows the texts in the file.
  std::vector<std::string> default_texts;
  std::vector<std::string> edited_texts;
  std::string profile_0;
  std::wstring posted_fields;
  std::vector<std::string> saved_texts;
  const wchar_t* default_name;
  const wchar_t* load_failure_end;
};

std::ostream& operator<<(std::ostream& out, const FormCase& form_case) {
  return out << form_case.expected;
}

std::string FileBytes(const std::string& magic, const std::vector<std::string>& texts,
                      const std::string& end) {
  std::string bytes = magic;
  for (const std::string& text : texts)
    bytes += TextField(text);
  return bytes + end;
}

const std::string kBeeperMagic =
    "\x81\xF4\x46\xE5\x3D\x98\x7E\x5A\x61\x0B\xE8\x0B\xF1\x58\xF2\x2E"s;
const std::string kPagerMagic = "\x0D\x54\x05\xCF\x4F\x53\x4B\x16\xBD\x02\xD1\x2A\x35\xBF\x08\x40"s;
const std::string kMailMagic = "\x8C\x26\xDD\xD6\x2B\xA3\x86\xEF\x26\x83\xA7\xDA\x94\x10\xF9\x49"s;
const std::string kPopupMagic = "\x29\x2C\x76\x8B\x2E\x0B\x58\x9C\x6C\x92\x5C\x2A\x02\x1A\xFB\x08"s;
const std::string kProfile0(4, '\0');

const std::vector<std::string> kBeeperTexts = {"555-0199", "",        "11*\"up\"",
                                               "12<down>", "13&trap", "not shown"};
const std::vector<std::string> kMailTexts = {
    "192.0.2.25", "ops@example.com,\"Night\" <night@example.com>", "%s <monitor@example.com>",
    "Alert & more", "Device <b>%D</b> is \"down\".\r\nSecond line\r\n\r\nLast & least"};
const std::vector<std::string> kPopupTexts = {"NIGHT\"PC\"", "Device <%D> is down & out"};

std::vector<std::string> PagerTexts(const char* protocol) {
  return {"+44 20 7946 0958", "se\"cret", "12<34>5", "%C & more", protocol};
}

const FormCase kFormCases[] = {
    {kBeeper,
     "beeper",
     kBeeperMagic,
     kBeeperTexts,
     kBeeperTexts,
     kProfile0,
     L"&beepernumber=a+1&upcode=b%20c&downcode=d&trapcode=&reportmessage=%25C\r\nlost",
     {"a 1", "", "b%20c", "d", "", "%25C"},
     L"Default Beeper",
     L"\r"},
    {kPager,
     "pager",
     kPagerMagic,
     PagerTexts("NTT"),
     PagerTexts("UCP-SMS"),
     kProfile0,
     L"&pagernumber=a+1&password=b%20c&pagerid=&message=d\r\nlost&protocol=SMS-TAP",
     {"a 1", "b%20c", "", "d", "SMS-TAP"},
     L"Default Beeper",
     L"\r"},
    {kSMTPMail,
     "smtp_mail",
     kMailMagic,
     kMailTexts,
     kMailTexts,
     "",
     L"&gateway=192.0.2.1\r\nlost&to=a+1&from=nobody&subject=&message=b%20c\r\n\r\nkept+too\r\n",
     {"192.0.2.1", "a 1", "nobody", "", "b%20c\r\n\r\nkept too\r\n"},
     L"Default SMTPMail",
     L"\r\n"},
    {kWinPopup,
     "win_popup",
     kPopupMagic,
     kPopupTexts,
     kPopupTexts,
     "",
     L"&destination=a+1&message=b%20c\r\nlost",
     {"a 1", "b%20c"},
     L"Default WinPopup",
     L"\r\n"},
};

std::string Narrow(std::wstring_view page) {
  std::string narrow;
  for (const wchar_t c : page)
    narrow.push_back(c < 0x80 ? static_cast<char>(c) : '?');
  return narrow;
}

// The web side of a new object of a class, whose instances stand in a folder of the test's own.
class WebSide {
 public:
  explicit WebSide(const ExpectedClass& expected) : notifier_(module_.CreateNotifier(expected)) {
    if (notifier_->QueryInterface(ToGuid(kNotifierWebConfigIid), web_.put_void()) != S_OK) {
      throw std::runtime_error("the class offers no web forms");
    }
  }

  void Bind() {
    if (notifier_->Initialize(&host) != S_OK) throw std::runtime_error("no host can be bound");
  }

  void Store(const std::wstring& name, const std::string& bytes) const {
    static_cast<void>(scratch_.Write(name, bytes));
  }

  // With nothing but zeros behind the bytes, up to 1.3 GB.
  void StoreLarge(const std::wstring& name, const std::string& bytes) const {
    std::filesystem::resize_file(scratch_.Write(name, bytes), 1'300'000'000);
  }

  [[nodiscard]] std::wstring PathOf(const std::wstring& name) const {
    return scratch_.path().wstring() + L"\\" + name;
  }

  HRESULT AddPage(std::wstring& page) {
    Bstr text;
    const HRESULT result = web_->GetAddPage(Folder().get(), text.in_out());
    page = text.view();
    return result;
  }

  HRESULT EditPage(const std::wstring& path, std::wstring& page) {
    Bstr text;
    const HRESULT result = web_->GetEditPage(Bstr(path).get(), text.in_out());
    page = text.view();
    return result;
  }

  HRESULT Submit(const std::wstring& form) {
    return web_->SubmitForm(Folder().get(), Bstr(form).get());
  }

  // All files of the folder.
  [[nodiscard]] std::map<std::wstring, std::string> Files() const {
    std::map<std::wstring, std::string> files;
    for (const auto& entry : std::filesystem::directory_iterator(scratch_.path())) {
      std::ifstream file(entry.path(), std::ios::binary);
      files[entry.path().filename().wstring()] = {std::istreambuf_iterator<char>(file), {}};
    }
    return files;
  }

  [[nodiscard]] HMODULE module() const { return module_.handle(); }
  [[nodiscard]] INotifierWebConfig* operator->() const { return web_.operator->(); }

  RecordingHost host;

 private:
  [[nodiscard]] Bstr Folder() const { return Bstr(scratch_.path().wstring()); }

  ScratchDirectory scratch_;
  LoadedModule module_;
  ComPointer<INotifier> notifier_;
  ComPointer<INotifierWebConfig> web_;
};

class WebFormsOfEveryClass : public ::testing::TestWithParam<FormCase> {
 protected:
  [[nodiscard]] static std::string Golden(const std::string& page) {
    return GoldenFile(GetParam().golden_stem + ("_" + page) + ".html");
  }

  [[nodiscard]] static std::string InstanceFile(const std::vector<std::string>& texts) {
    return FileBytes(GetParam().magic, texts, GetParam().profile_0);
  }

  [[nodiscard]] static std::wstring Form(const std::wstring& names) {
    const std::string_view type = GetParam().expected.name;
    return L"page=notify&" + names + L"&action=return&type=" +
           std::wstring(type.begin(), type.end()) + GetParam().posted_fields + L"&end=end";
  }

  WebSide web_{GetParam().expected};
};

INSTANTIATE_TEST_SUITE_P(Classes, WebFormsOfEveryClass, ValuesIn(kFormCases),
                         [](const auto& form) { return std::string(form.param.expected.name); });

TEST_P(WebFormsOfEveryClass, ShowTheValuesOfDefaultOnTheAddPage) {
  web_.Bind();
  web_.Store(L"Default", InstanceFile(GetParam().default_texts));

  std::wstring page;
  EXPECT_EQ(web_.AddPage(page), S_OK);
  EXPECT_EQ(Narrow(page), Golden("add_page"));
  EXPECT_THAT(web_.host.log_calls, IsEmpty());
}

TEST_P(WebFormsOfEveryClass, ShowAnEmptyAddPageWithoutDefaultAndTellTheHost) {
  web_.Bind();

  std::wstring page;
  EXPECT_EQ(web_.AddPage(page), S_OK);
  EXPECT_EQ(Narrow(page), Golden("add_page_without_default"));
  EXPECT_THAT(web_.host.log_calls,
              ElementsAre(LogCall{1, GetParam().default_name}, LogCall{1, kReason},
                          LogCall{1, GetParam().load_failure_end}));
  EXPECT_THAT(web_.host.expand_calls, IsEmpty());
  EXPECT_EQ(web_.host.trigger_calls, 0);
  EXPECT_EQ(web_.host.references(), 2);
}

TEST_P(WebFormsOfEveryClass, NeedNoHost) {
  std::wstring page;
  EXPECT_EQ(web_.AddPage(page), S_OK);
  EXPECT_EQ(Narrow(page), Golden("add_page_without_default"));
  EXPECT_EQ(web_.EditPage(web_.PathOf(L"missing"), page), E_FAIL);
  EXPECT_EQ(web_.Submit(Form(L"origname=&instancename=New")), S_OK);
  EXPECT_EQ(web_.EditPage(web_.PathOf(L"New"), page), S_OK);
}

TEST_P(WebFormsOfEveryClass, ShowAnInstanceOnTheEditPage) {
  web_.Bind();
  web_.Store(L"Night shift", InstanceFile(GetParam().edited_texts));

  std::wstring page;
  EXPECT_EQ(web_.EditPage(web_.PathOf(L"Night shift"), page), S_OK);
  EXPECT_EQ(Narrow(page), Golden("edit_page"));
  EXPECT_THAT(web_.host.log_calls, IsEmpty());
}

TEST_P(WebFormsOfEveryClass, HaveNoEditPageOfAMissingInstance) {
  web_.Bind();
  BSTR page = nullptr;
  const std::wstring path = web_.PathOf(L"missing");

  EXPECT_EQ(web_->GetEditPage(Bstr(path).get(), &page), static_cast<HRESULT>(0x80004005));
  EXPECT_EQ(page, nullptr);
  EXPECT_THAT(web_.host.log_calls, ElementsAre(LogCall{1, path}, LogCall{1, kReason},
                                               LogCall{1, GetParam().load_failure_end}));
}

TEST_P(WebFormsOfEveryClass, LeaveThePageAsItWasWhenThereIsNone) {
  const Bstr earlier(L"earlier");
  BSTR page = earlier.get();

  EXPECT_EQ(web_->GetEditPage(Bstr(web_.PathOf(L"missing")).get(), &page), E_FAIL);
  EXPECT_EQ(page, earlier.get());
  EXPECT_EQ(web_->GetEditPage(nullptr, &page), E_FAIL);
  EXPECT_EQ(page, earlier.get());
}

TEST_P(WebFormsOfEveryClass, RefuseAnotherClasssInstance) {
  const bool is_beeper = GetParam().magic == kBeeperMagic;
  const FormCase& other = is_beeper ? kFormCases[1] : kFormCases[0];
  web_.Store(L"Other", FileBytes(other.magic, other.edited_texts, other.profile_0));

  std::wstring page;
  EXPECT_EQ(web_.EditPage(web_.PathOf(L"Other"), page), E_FAIL);
}

TEST_P(WebFormsOfEveryClass, TakeANullDirectoryForAnEmptyText) {
  Bstr page;
  EXPECT_EQ(web_->GetAddPage(nullptr, page.in_out()), S_OK);
  EXPECT_EQ(Narrow(page.view()), Golden("add_page_without_default"));
}

// Nothing is read of the file but its beginning, so its size does not matter.
TEST_P(WebFormsOfEveryClass, RefuseAForeignFileOfAnySizeAndTellTheHost) {
  web_.Bind();
  web_.StoreLarge(L"Large", "of nobody's");
  const std::wstring path = web_.PathOf(L"Large");

  std::wstring page;
  EXPECT_EQ(web_.EditPage(path, page), E_FAIL);
  EXPECT_THAT(web_.host.log_calls, ElementsAre(LogCall{1, path}, LogCall{1, kReason},
                                               LogCall{1, GetParam().load_failure_end}));
}

TEST_P(WebFormsOfEveryClass, ShowAnInstanceWhateverFollowsItInItsFile) {
  web_.StoreLarge(L"Night shift", InstanceFile(GetParam().edited_texts));

  std::wstring page;
  EXPECT_EQ(web_.EditPage(web_.PathOf(L"Night shift"), page), S_OK);
  EXPECT_EQ(Narrow(page), Golden("edit_page"));
}

TEST_P(WebFormsOfEveryClass, HaveNoEditPageOfAFileThatEndsEarlyWhereTextsAreOfAnyLength) {
  std::string file = InstanceFile(GetParam().edited_texts);
  file.resize(20);
  web_.Store(L"Day", file);
  const bool refused = GetParam().magic == kMailMagic || GetParam().magic == kPopupMagic;

  std::wstring page;
  EXPECT_EQ(web_.EditPage(web_.PathOf(L"Day"), page), refused ? E_FAIL : S_OK);
}

TEST_P(WebFormsOfEveryClass, AddAnInstance) {
  web_.Bind();

  EXPECT_EQ(web_.Submit(Form(L"origname=&instancename=Day+shift")), S_OK);
  EXPECT_THAT(web_.Files(),
              ElementsAre(std::pair(L"Day shift", InstanceFile(GetParam().saved_texts))));
  EXPECT_THAT(web_.host.log_calls, IsEmpty());
}

TEST_P(WebFormsOfEveryClass, EditAnInstanceInPlace) {
  web_.Store(L"Day", InstanceFile(GetParam().edited_texts));

  EXPECT_EQ(web_.Submit(Form(L"origname=Day")), S_OK);
  EXPECT_THAT(web_.Files(), ElementsAre(std::pair(L"Day", InstanceFile(GetParam().saved_texts))));
}

TEST_P(WebFormsOfEveryClass, CreateAnEditedInstanceWhoseFileIsGone) {
  EXPECT_EQ(web_.Submit(Form(L"origname=Day")), S_OK);
  EXPECT_THAT(web_.Files(), ElementsAre(std::pair(L"Day", InstanceFile(GetParam().saved_texts))));
}

TEST_P(WebFormsOfEveryClass, RenameAnInstance) {
  web_.Store(L"old", InstanceFile(GetParam().edited_texts));

  EXPECT_EQ(web_.Submit(Form(L"origname=new/old")), S_OK);
  EXPECT_THAT(web_.Files(), ElementsAre(std::pair(L"new", InstanceFile(GetParam().saved_texts))));
}

TEST_P(WebFormsOfEveryClass, RenameByLetterCaseAlone) {
  web_.Store(L"\u00FCber", InstanceFile(GetParam().edited_texts));

  EXPECT_EQ(web_.Submit(Form(L"origname=\u00DCBER/\u00FCber")), S_OK);
  EXPECT_THAT(web_.Files(),
              ElementsAre(std::pair(L"\u00DCBER", InstanceFile(GetParam().saved_texts))));
}

// The file system tells these apart, whatever dictionaries say.
TEST_P(WebFormsOfEveryClass, RenameBetweenNamesThatAreAlikeInDictionaries) {
  const std::pair<std::wstring, std::wstring> names[] = {{L"Stra\u00DFe", L"Strasse"},
                                                         {L"\u00E6gir", L"aegir"},
                                                         {L"\u0153uf", L"oeuf"},
                                                         {L"\u00FEing", L"thing"},
                                                         {L"co\u00ADop", L"coop"}};
  std::map<std::wstring, std::string> expected;
  for (const auto& [name, old_name] : names) {
    web_.Store(old_name, InstanceFile(GetParam().edited_texts));
    EXPECT_EQ(web_.Submit(Form(L"origname=" + name + L"/" + old_name)), S_OK);
    expected[name] = InstanceFile(GetParam().saved_texts);
    EXPECT_EQ(web_.Files(), expected);
  }
}

// What stands in the module's place for malloc: its n-th call from now finds no memory.
int calls_until_failure = 0;
void* AllocateOrFail(std::size_t size) {
  // NOLINTNEXTLINE(*-no-malloc): of the heap to which the module gives it back
  return calls_until_failure != 0 && --calls_until_failure == 0 ? nullptr : std::malloc(size);
}

TEST_P(WebFormsOfEveryClass, LoseNothingWhicheverAllocationFails) {
  const std::wstring name = L"a new name that has to be allocated";
  const std::wstring old_name = L"an old name that has to be allocated";
  const std::map<std::wstring, std::string> before = {
      {old_name, InstanceFile(GetParam().edited_texts)}};
  const std::map<std::wstring, std::string> after = {{name, InstanceFile(GetParam().saved_texts)}};
  web_.Store(old_name, before.at(old_name));
  const ImportPatch patch(web_.module(), "malloc", reinterpret_cast<void*>(AllocateOrFail));
  int n = 0;
  for (bool failed = true; failed;) {
    calls_until_failure = ++n;
    const HRESULT result = web_.Submit(Form(L"origname=" + name + L"/" + old_name));
    failed = calls_until_failure == 0;
    calls_until_failure = 0;
    EXPECT_EQ(result, failed ? E_FAIL : S_OK) << n;
    EXPECT_EQ(web_.Files(), failed ? before : after) << n;
  }
  EXPECT_GT(n, 8);
}

TEST_P(WebFormsOfEveryClass, SaveMissingFieldsAsEmpty) {
  EXPECT_EQ(web_.Submit(L"origname=Day"), S_OK);
  const std::vector<std::string> empty(GetParam().saved_texts.size());
  EXPECT_THAT(web_.Files(), ElementsAre(std::pair(L"Day", InstanceFile(empty))));
}

TEST_P(WebFormsOfEveryClass, EndTheFormAtANul) {
  EXPECT_EQ(web_.Submit(L"origname=Day"s + L'\0' + Form(L"")), S_OK);
  const std::vector<std::string> empty(GetParam().saved_texts.size());
  EXPECT_THAT(web_.Files(), ElementsAre(std::pair(L"Day", InstanceFile(empty))));
}

TEST_P(WebFormsOfEveryClass, LeaveAFileWholeThatSomebodyReads) {
  const std::string before = InstanceFile(GetParam().edited_texts);
  web_.Store(L"Day", before);
  {
    const Handle reader(CreateFileW(web_.PathOf(L"Day").c_str(), GENERIC_READ, FILE_SHARE_READ,
                                    nullptr, OPEN_EXISTING, 0, nullptr));
    ASSERT_TRUE(reader);
    EXPECT_EQ(web_.Submit(Form(L"origname=Day")), E_FAIL);
    EXPECT_EQ(web_.Submit(Form(L"origname=DAY/day")), E_FAIL);
    EXPECT_EQ(web_.Submit(Form(L"origname=&instancename=Day")), E_FAIL);
    std::wstring page;
    EXPECT_EQ(web_.EditPage(web_.PathOf(L"Day"), page), S_OK) << "readers share";
  }
  EXPECT_THAT(web_.Files(), ElementsAre(std::pair(L"Day", before)));

  EXPECT_EQ(web_.Submit(Form(L"origname=Day")), S_OK);
  EXPECT_THAT(web_.Files(), ElementsAre(std::pair(L"Day", InstanceFile(GetParam().saved_texts))));
}

TEST_P(WebFormsOfEveryClass, HaveDeletedTheOldFileWhenARenameCannotBeSaved) {
  const std::string before = InstanceFile(GetParam().edited_texts);
  web_.Store(L"old", before);
  web_.Store(L"new", before);
  {
    const Handle reader(CreateFileW(web_.PathOf(L"new").c_str(), GENERIC_READ, FILE_SHARE_READ,
                                    nullptr, OPEN_EXISTING, 0, nullptr));
    ASSERT_TRUE(reader);
    EXPECT_EQ(web_.Submit(Form(L"origname=new/old")), E_FAIL);
  }
  EXPECT_THAT(web_.Files(), ElementsAre(std::pair(L"new", before)));
}

TEST_P(WebFormsOfEveryClass, DoNotReadAFileThatSomebodyWrites) {
  web_.Store(L"Default", InstanceFile(GetParam().default_texts));
  const Handle writer(CreateFileW(web_.PathOf(L"Default").c_str(), GENERIC_WRITE, FILE_SHARE_READ,
                                  nullptr, OPEN_EXISTING, 0, nullptr));
  ASSERT_TRUE(writer);

  std::wstring page;
  EXPECT_EQ(web_.EditPage(web_.PathOf(L"Default"), page), E_FAIL);
  EXPECT_EQ(web_.AddPage(page), S_OK);
  EXPECT_EQ(Narrow(page), Golden("add_page_without_default"));
}

TEST_P(WebFormsOfEveryClass, RefuseNamesThatNoFileInTheDirectoryMayHave) {
  web_.Store(L"old", InstanceFile(GetParam().edited_texts));
  const auto before = web_.Files();
  // The last two are no text of a western code page, and must not become another name.
  for (const std::wstring name :
       {L"..\\up", L"a\\b", L"C:up",     L".",         L"..",
        L"a*",     L"a?",   L"a\"b",     L"a<b",       L"a>b",
        L"a|b",    L"NUL",  L"com1.txt", L"COM\x00B9", L"lpt\x00B2.txt",
        L"clock$", L"end.", L"end+",     L"\x05D0",    L"old\xFF0F\x05D0"}) {
    for (const std::wstring& names : {L"origname=&instancename=" + name, L"origname=" + name,
                                      L"origname=" + name + L"/old", L"origname=new/" + name}) {
      EXPECT_EQ(web_.Submit(Form(names)), E_FAIL) << Narrow(names);
    }
  }
  for (const std::wstring names :
       {L"", L"origname=&instancename=", L"origname=/old", L"origname=&instancename=a/b"}) {
    EXPECT_EQ(web_.Submit(Form(names)), E_FAIL) << Narrow(names);
  }
  EXPECT_EQ(web_.Files(), before);
  EXPECT_FALSE(std::filesystem::exists(web_.PathOf(L"..\\up")));
}

TEST_P(WebFormsOfEveryClass, FailInADirectoryThatIsNotThere) {
  const Bstr missing(web_.PathOf(L"missing"));
  EXPECT_EQ(web_->SubmitForm(missing.get(), Bstr(Form(L"origname=Day")).get()), E_FAIL);
  EXPECT_THAT(web_.Files(), IsEmpty());
}

TEST_P(WebFormsOfEveryClass, AllocateNothingButThePage) {
  web_.Bind();
  const Bstr folder(web_.PathOf(L""));
  const Bstr path(web_.PathOf(L"Day"));
  const Bstr form(Form(L"origname=Day"));
  const AllocationBalance balance;
  BSTR page = nullptr;
  ASSERT_EQ(web_->GetAddPage(folder.get(), &page), S_OK);
  EXPECT_EQ(balance.Outstanding(), 1);
  SysFreeString(page);
  EXPECT_EQ(web_->GetEditPage(path.get(), &page), E_FAIL);
  EXPECT_EQ(web_->SubmitForm(folder.get(), form.get()), S_OK);
  EXPECT_EQ(balance.Outstanding(), 0);
  EXPECT_EQ(balance.StrayFrees(), 0);
}

class BeeperWebForms : public ::testing::Test {
 protected:
  [[nodiscard]] static std::string BeeperFile(const std::vector<std::string>& texts, char profile) {
    return FileBytes(kBeeperMagic, texts, profile + "\0\0\0"s);
  }

  [[nodiscard]] std::string SavedAs(const std::wstring& name) const {
    return web_.Files().at(name);
  }

  WebSide web_{kBeeper};
  std::wstring page_;
};

TEST_F(BeeperWebForms, SaveTheProfileOfThePageShownLast) {
  web_.Store(L"Default", BeeperFile({"1", "", "", "", "", ""}, 2));
  web_.Store(L"Day", BeeperFile({"1", "", "", "", "", ""}, 10));
  const std::vector<std::string> saved = {"", "", "9", "", "", ""};

  EXPECT_EQ(web_.Submit(L"origname=saved&upcode=9"), S_OK);
  EXPECT_EQ(SavedAs(L"saved"), BeeperFile(saved, 0)) << "no page yet";
  ASSERT_EQ(web_.EditPage(web_.PathOf(L"Day"), page_), S_OK);
  EXPECT_EQ(web_.Submit(L"origname=saved&upcode=9"), S_OK);
  EXPECT_EQ(SavedAs(L"saved"), BeeperFile(saved, 10));
  ASSERT_EQ(web_.AddPage(page_), S_OK);
  EXPECT_EQ(web_.Submit(L"origname=saved&upcode=9"), S_OK);
  EXPECT_EQ(SavedAs(L"saved"), BeeperFile(saved, 2));
  ASSERT_EQ(web_.EditPage(web_.PathOf(L"missing"), page_), E_FAIL);
  EXPECT_EQ(web_.Submit(L"origname=saved&upcode=9"), S_OK);
  EXPECT_EQ(SavedAs(L"saved"), BeeperFile(saved, 2)) << "no new page";
}

TEST(PagerWebForms, GiveANewInstanceTheProfileOfThePageShownLastElseProfile0) {
  const auto file = [](const std::vector<std::string>& texts, char profile) {
    return FileBytes(kPagerMagic, texts, profile + "\0\0\0"s);
  };
  const std::vector<std::string> saved = {"5550200", "", "123", "%C", "SMS-TAP"};
  const std::wstring form =
      L"origname=&instancename=New&pagernumber=5550200&pagerid=123&message=%C&protocol=SMS-TAP";
  WebSide web(kPager);
  std::wstring page;

  EXPECT_EQ(web.Submit(form), S_OK);
  EXPECT_EQ(web.Files().at(L"New"), file(saved, 0)) << "no page yet";
  web.Store(L"Default", file({"", "", "", "", ""}, 2));
  ASSERT_EQ(web.AddPage(page), S_OK);
  EXPECT_EQ(web.Submit(form), S_OK);
  EXPECT_EQ(web.Files().at(L"New"), file(saved, 2));
  web.Store(L"Day", file({"", "", "", "", ""}, 10));
  ASSERT_EQ(web.EditPage(web.PathOf(L"Day"), page), S_OK);
  EXPECT_EQ(web.Submit(form), S_OK);
  EXPECT_EQ(web.Files().at(L"New"), file(saved, 10));
}

TEST_F(BeeperWebForms, KeepTheDialingOptions) {
  web_.Store(L"Default", BeeperFile({"1", "of Default", "", "", "", ""}, 0));
  web_.Store(L"Day", BeeperFile({"1", "of Day", "", "", "", "report"}, 0));

  EXPECT_EQ(web_.Submit(L"instancename=New&upcode=9"), S_OK);
  EXPECT_EQ(SavedAs(L"New"), BeeperFile({"", "of Default", "9", "", "", ""}, 0));
  EXPECT_EQ(web_.Submit(L"origname=Day&upcode=9"), S_OK);
  EXPECT_EQ(SavedAs(L"Day"), BeeperFile({"", "of Day", "9", "", "", ""}, 0));
  EXPECT_EQ(web_.Submit(L"origname=Night/Day&upcode=9"), S_OK);
  EXPECT_EQ(SavedAs(L"Night"), BeeperFile({"", "of Day", "9", "", "", ""}, 0));
}

TEST_F(BeeperWebForms, LoadFilesThatEndBehindTheMandatoryFields) {
  web_.Store(L"Day", FileBytes(kBeeperMagic, {"1", "2", "3", "4", "5"}, ""));
  EXPECT_EQ(web_.EditPage(web_.PathOf(L"Day"), page_), S_OK);
  EXPECT_THAT(Narrow(page_), HasSubstr("name=trapcode value=\"5\""));
}

TEST_F(BeeperWebForms, ShowTextOfTheAnsiCodePage) {
  const char e_acute = '\xE9';
  wchar_t expected = 0;
  ASSERT_EQ(MultiByteToWideChar(CP_ACP, 0, &e_acute, 1, &expected, 1), 1);
  web_.Store(L"Day", BeeperFile({std::string(1, e_acute) + "1", "", "", "", "", ""}, 0));

  ASSERT_EQ(web_.EditPage(web_.PathOf(L"Day"), page_), S_OK);
  EXPECT_NE(page_.find(std::wstring(L"name=beepernumber value=\"") + expected + L"1\""),
            std::wstring::npos);
}

TEST_F(BeeperWebForms, CallAnInstanceByWhatFollowsTheLastBackslash) {
  web_.Store(L"R&D, 50%", BeeperFile({"1", "", "", "", "", ""}, 0));
  ASSERT_EQ(web_.EditPage(web_.PathOf(L".\\R&D, 50%"), page_), S_OK);
  EXPECT_THAT(Narrow(page_), HasSubstr(R"(name="origname" value="R&amp;D, 50%">)"));
  EXPECT_THAT(Narrow(page_), HasSubstr("name=instancename value=\"R&amp;D, 50%\">"));
}

}  // namespace
}  // namespace brantel
