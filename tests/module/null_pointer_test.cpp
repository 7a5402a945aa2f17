// Null pointers get an answer and never a crash. Methods that would rightly show a dialog for their
// other arguments are only called with those that they must refuse before.
#include <windows.h>
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <oleauto.h>

#include <string_view>
#include <vector>

#include "system/windows/bstr_win32.h"
#include "tests/module/expected_classes.h"
#include "tests/module/loaded_module.h"
#include "tests/module/recording_host.h"

namespace brantel {
namespace {

using ::testing::AnyOf;
using ::testing::ValuesIn;

const auto IsRefusal = AnyOf(E_POINTER, E_FAIL);
// An empty instance silences Sound, which is a success; it fails where there is no sound device.
const auto IsAnswerOfSound = AnyOf(S_OK, E_FAIL);

class NullPointer : public ::testing::TestWithParam<ExpectedClass> {
 protected:
  LoadedModule module_;
  RecordingHost host_;
  ComPointer<INotifier> notifier_ = module_.CreateNotifier(GetParam());
  const Bstr folder_{L"Z:\\no such folder"};
};

class NullPointerToWebForms : public NullPointer {
 protected:
  ComPointer<INotifierWebConfig> web_ =
      module_.Create<INotifierWebConfig>(GetParam(), kNotifierWebConfigIid);
};

INSTANTIATE_TEST_SUITE_P(Classes, NullPointer, ValuesIn(kExpectedClasses), NameOfClass);
INSTANTIATE_TEST_SUITE_P(Classes, NullPointerToWebForms, ValuesIn(ClassesWithWebForms()),
                         NameOfClass);

TEST_P(NullPointer, AsInstanceOfSendIsAnEmptyTextWithAndWithoutAHost) {
  const auto send = [&] { return notifier_->Send(nullptr); };
  const bool is_sound = std::string_view(GetParam().name) == "Sound";
  const ::testing::Matcher<HRESULT> expected = is_sound ? IsAnswerOfSound : IsRefusal;

  EXPECT_THAT(send(), expected);
  notifier_->Initialize(&host_);
  EXPECT_THAT(send(), expected);
  notifier_->Shutdown();
  EXPECT_THAT(send(), expected);
}

TEST_P(NullPointer, AsNameOfADialogIsRefused) {
  const auto config = module_.Create<INotifierConfig>(GetParam(), kNotifierConfigIid);

  EXPECT_THAT(config->AddInstance(folder_.get(), nullptr), IsRefusal);
  EXPECT_THAT(config->AddInstance(nullptr, nullptr), IsRefusal);
  EXPECT_THAT(config->EditInstance(folder_.get(), nullptr), IsRefusal);
  EXPECT_THAT(config->EditInstance(nullptr, nullptr), IsRefusal);
}

TEST_P(NullPointer, AsPlaceOfTheImageIsRefusedAndTheOtherPlaceKept) {
  const auto config = module_.Create<INotifierConfig>(GetParam(), kNotifierConfigIid);
  HMODULE module = nullptr;
  UINT32 id = 4711;

  EXPECT_THAT(config->GetImageResource(nullptr, &id), IsRefusal);
  EXPECT_EQ(id, 4711U);
  EXPECT_THAT(config->GetImageResource(&module, nullptr), IsRefusal);
  EXPECT_EQ(module, nullptr);
  EXPECT_THAT(config->GetImageResource(nullptr, nullptr), IsRefusal);
}

TEST_P(NullPointerToWebForms, AsPlaceOfThePageIsRefused) {
  EXPECT_THAT(web_->GetAddPage(folder_.get(), nullptr), IsRefusal);
  EXPECT_THAT(web_->GetAddPage(nullptr, nullptr), IsRefusal);
  EXPECT_THAT(web_->GetEditPage(folder_.get(), nullptr), IsRefusal);
  EXPECT_THAT(web_->GetEditPage(nullptr, nullptr), IsRefusal);
}

TEST_P(NullPointerToWebForms, AsInstanceOfTheEditPageIsRefusedAndThePageKept) {
  BSTR page = nullptr;

  EXPECT_THAT(web_->GetEditPage(nullptr, &page), IsRefusal);
  EXPECT_EQ(page, nullptr);
}

TEST_P(NullPointerToWebForms, AsFormIsRefused) {
  EXPECT_THAT(web_->SubmitForm(folder_.get(), nullptr), IsRefusal);
  EXPECT_THAT(web_->SubmitForm(nullptr, nullptr), IsRefusal);
}

}  // namespace
}  // namespace brantel
