// Whose the texts are that cross the interfaces: the host's are still there, unchanged, when a call
// has returned, and each that it is given is its own to free. Texts that a host expands, and names
// that a dialog replaces, have their tests with LaunchProgram and with the dialogs.
#include <windows.h>
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "system/windows/bstr_win32.h"
#include "tests/module/allocation_ledger.h"
#include "tests/module/expected_classes.h"
#include "tests/module/instance_bytes.h"
#include "tests/module/loaded_module.h"
#include "tests/module/recording_host.h"
#include "tests/module/scratch_directory.h"

namespace brantel {
namespace {

using namespace std::string_literals;
using ::testing::ValuesIn;

class TextOwnership : public ::testing::TestWithParam<ExpectedClass> {
 protected:
  // Twice, since what the system keeps after a first call is nobody's debt.
  template <typename Call>
  static void ExpectBalanced(long new_texts, Call call) {
    call();
    const AllocationBalance balance;
    call();
    EXPECT_EQ(balance.Outstanding(), new_texts);
    EXPECT_EQ(balance.StrayFrees(), 0);
  }

  LoadedModule module_;
  RecordingHost host_;
  ScratchDirectory scratch_;
};

class WebTextOwnership : public TextOwnership {
 protected:
  ComPointer<INotifierWebConfig> web_ =
      module_.Create<INotifierWebConfig>(GetParam(), kNotifierWebConfigIid);
  const std::wstring folder_text_ = scratch_.path().wstring();
  const Bstr folder_{folder_text_};
};

INSTANTIATE_TEST_SUITE_P(Classes, TextOwnership, ValuesIn(kExpectedClasses), NameOfClass);
INSTANTIATE_TEST_SUITE_P(Classes, WebTextOwnership, ValuesIn(ClassesWithWebForms()), NameOfClass);

TEST_P(TextOwnership, OfAnInstanceThatIsSentStaysWithTheHost) {
  const auto notifier = module_.CreateNotifier(GetParam());
  notifier->Initialize(&host_);
  const std::wstring text = scratch_.Write(L"night", "no instance").wstring();
  const Bstr instance(text);

  ExpectBalanced(0, [&] { EXPECT_EQ(notifier->Send(instance.get()), E_FAIL); });
  EXPECT_EQ(instance.view(), text);
}

TEST_P(WebTextOwnership, OfAnAddPageIsTheHosts) {
  std::vector<Bstr> pages;
  pages.reserve(2);
  ExpectBalanced(
      1, [&] { EXPECT_EQ(web_->GetAddPage(folder_.get(), pages.emplace_back().in_out()), S_OK); });
  EXPECT_NE(pages[0].get(), pages[1].get());
  EXPECT_EQ(pages[0].view(), pages[1].view());
  EXPECT_EQ(folder_.view(), folder_text_);
}

TEST_P(WebTextOwnership, OfAnEditPageIsTheHosts) {
  const std::wstring text = folder_text_ + L"\\night";
  const Bstr instance(text);
  ASSERT_EQ(web_->SubmitForm(folder_.get(), Bstr(L"origname=night").get()), S_OK);
  std::vector<Bstr> pages;
  pages.reserve(2);
  ExpectBalanced(1, [&] {
    EXPECT_EQ(web_->GetEditPage(instance.get(), pages.emplace_back().in_out()), S_OK);
  });
  EXPECT_NE(pages[0].get(), pages[1].get());
  EXPECT_EQ(pages[0].view(), pages[1].view());
  EXPECT_EQ(instance.view(), text);
}

TEST_P(WebTextOwnership, OfAPostedFormStaysWithTheHost) {
  const std::wstring text = L"origname=night&message=a+b%20c\r\nd&gateway=e\0f"s;
  const Bstr form(text);

  ExpectBalanced(0, [&] { EXPECT_EQ(web_->SubmitForm(folder_.get(), form.get()), S_OK); });
  EXPECT_EQ(form.view(), text);
  EXPECT_EQ(folder_.view(), folder_text_);
}

}  // namespace
}  // namespace brantel
