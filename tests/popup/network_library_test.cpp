// How long an object keeps the network library.
#include <windows.h>
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "system/windows/bstr_win32.h"
#include "tests/module/loaded_module.h"
#include "tests/module/recording_host.h"
#include "tests/module/scratch_directory.h"
#include "tests/popup/win_popup_fixture.h"

namespace brantel {
namespace {

using ::testing::ElementsAre;
using ::testing::IsEmpty;
using ::testing::SizeIs;
using ::testing::StartsWith;

class NetworkLibraryUse : public ::testing::Test {
 protected:
  HRESULT Send() { return notifier_->Send(Bstr(instance_.wstring()).get()); }

  StandIns stand_ins_;
  ScratchDirectory scratch_;
  std::filesystem::path instance_ = scratch_.Write(L"night", ExpectedWinPopupDialog().sample_file);
  LoadedModule module_;
  RecordingHost host_;
  ComPointer<INotifier> notifier_ = module_.CreateNotifier(kWinPopup);
};

TEST_F(NetworkLibraryUse, BeginsWithTheFirstSendAndEndsWithShutdown) {
  ASSERT_EQ(notifier_->Initialize(&host_), S_OK);
  EXPECT_THAT(stand_ins_.Report(), IsEmpty());
  ASSERT_EQ(Send(), S_OK);
  EXPECT_THAT(stand_ins_.Report(), ElementsAre(R"(loaded C:\windows\system32\netapi32.dll)",
                                               "message for pc9: %n is down",
                                               "  server (null), sender (null), answer 0, 20 bytes",
                                               "  25006E00200069007300200064006F0077006E00"));
  ASSERT_EQ(Send(), S_OK);
  EXPECT_THAT(stand_ins_.Report(), SizeIs(7));
  ASSERT_EQ(notifier_->Shutdown(), S_OK);
  EXPECT_EQ(stand_ins_.Report().back(), R"(unloaded C:\windows\system32\netapi32.dll)");

  ASSERT_EQ(notifier_->Initialize(&host_), S_OK);
  ASSERT_EQ(Send(), S_OK);
  notifier_ = {};
  EXPECT_THAT(stand_ins_.Report(), SizeIs(13));
  EXPECT_THAT(stand_ins_.Report().back(), StartsWith("unloaded"));
}

TEST_F(NetworkLibraryUse, DoesNotBeginWithoutAHost) {
  EXPECT_EQ(Send(), E_FAIL);
  ASSERT_EQ(notifier_->Initialize(&host_), S_OK);
  ASSERT_EQ(notifier_->Shutdown(), S_OK);
  EXPECT_EQ(Send(), E_FAIL);
  EXPECT_THAT(stand_ins_.Report(), IsEmpty());
  EXPECT_THAT(host_.log_calls, IsEmpty());
  EXPECT_THAT(host_.expand_calls, IsEmpty());
}

TEST_F(NetworkLibraryUse, DoesNotBeginWhenTheHostCannotExpandTheMessage) {
  host_.expansion = {.result = E_ACCESSDENIED, .replacement = Replacement::kNone};
  ASSERT_EQ(notifier_->Initialize(&host_), S_OK);
  EXPECT_EQ(Send(), E_ACCESSDENIED);
  EXPECT_THAT(stand_ins_.Report(), IsEmpty());
  EXPECT_THAT(host_.log_calls, IsEmpty());
}

TEST_F(NetworkLibraryUse, DoesNotBeginWhenTheInstanceCannotBeLoaded) {
  instance_ = scratch_.path() / L"none";
  ASSERT_EQ(notifier_->Initialize(&host_), S_OK);
  EXPECT_EQ(Send(), E_FAIL);
  EXPECT_THAT(stand_ins_.Report(), IsEmpty());
  EXPECT_THAT(host_.log_calls, ElementsAre(LogCall{1, instance_.wstring()},
                                           LogCall{1, L" - Failed to load notification from disk."},
                                           LogCall{1, L"\r\n"}));
}

TEST_F(NetworkLibraryUse, FailsWithoutALogLineWhenTheMessengerServiceRefuses) {
  stand_ins_.SetAnswer(2273);  // no such message name
  ASSERT_EQ(notifier_->Initialize(&host_), S_OK);
  EXPECT_EQ(Send(), E_FAIL);
  EXPECT_THAT(host_.log_calls, IsEmpty());
}

TEST_F(NetworkLibraryUse, SendsWhileADialogIsOpen) {
  stand_ins_.CloseGate();
  {
    DialogSession session(module_,
                          {.notifier_class = kWinPopup, .directory = scratch_.path().wstring()});
    ASSERT_EQ(notifier_->Initialize(&host_), S_OK);
    EXPECT_EQ(Send(), S_OK);
    ASSERT_EQ(notifier_->Shutdown(), S_OK);
    EXPECT_FALSE(stand_ins_.Report().back().starts_with("unloaded"));
  }
  stand_ins_.OpenGate();
  AwaitThat([&] { return stand_ins_.Report().back().starts_with("unloaded"); },
            "the library stays");
}

}  // namespace
}  // namespace brantel
