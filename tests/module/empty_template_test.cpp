// What a host is given to expand where an instance's template is empty.
#include <windows.h>
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <string>

#include "system/windows/bstr_win32.h"
#include "tests/module/expected_classes.h"
#include "tests/module/instance_bytes.h"
#include "tests/module/loaded_module.h"
#include "tests/module/recording_host.h"
#include "tests/module/scratch_directory.h"

namespace brantel {
namespace {

using ::testing::ElementsAre;

class EmptyTemplate : public ::testing::Test {
 protected:
  HRESULT Send(const ExpectedClass& expected, const std::string& fields) {
    const auto notifier = module_.CreateNotifier(expected);
    EXPECT_EQ(notifier->Initialize(&host_), S_OK);
    const Bstr instance(scratch_.Write(L"night", MagicBytes(expected) + fields).wstring());
    return notifier->Send(instance.get());
  }

  ScratchDirectory scratch_;
  LoadedModule module_;
  RecordingHost host_;
};

TEST_F(EmptyTemplate, OfSMTPMailIsAnAllocatedTextInEachField) {
  EXPECT_EQ(Send(kSMTPMail, TextField("no address") + TextField("ann@b.example") + TextField("") +
                                TextField("") + TextField("")),
            E_FAIL);
  const ExpandCall empty{false, L""};
  EXPECT_THAT(host_.expand_calls, ElementsAre(empty, empty, empty));
}

TEST_F(EmptyTemplate, OfWinPopupIsAnAllocatedText) {
  host_.expansion = {.result = kHostFailure, .replacement = Replacement::kNone};
  EXPECT_EQ(Send(kWinPopup, TextField("pc9") + TextField("")), kHostFailure);
  EXPECT_THAT(host_.expand_calls, ElementsAre(ExpandCall{false, L""}));
}

TEST_F(EmptyTemplate, OfPagerIsAnAllocatedText) {
  host_.expansion = {.result = kHostFailure, .replacement = Replacement::kNone};
  EXPECT_EQ(Send(kPager, TextField("5550200") + TextField("") + TextField("0041") + TextField("") +
                             TextField("TAP") + LengthBytes(0)),
            kHostFailure);
  EXPECT_THAT(host_.expand_calls, ElementsAre(ExpandCall{false, L""}));
}

TEST_F(EmptyTemplate, OfBeeperIsAnAllocatedText) {
  host_.expansion = {.result = kHostFailure, .replacement = Replacement::kNone};
  host_.trigger_result = E_FAIL;
  EXPECT_EQ(Send(kBeeper, TextField("5550300") + TextField("") + TextField("1") + TextField("2") +
                              TextField("3") + TextField("") + LengthBytes(0)),
            kHostFailure);
  EXPECT_THAT(host_.expand_calls, ElementsAre(ExpandCall{false, L"%C"}, ExpandCall{false, L""}));
}

// The one class whose hosts have always been given none.
TEST_F(EmptyTemplate, OfLaunchProgramIsNoTextAtAll) {
  host_.expansion = {.result = kHostFailure, .replacement = Replacement::kNone};
  EXPECT_EQ(Send(kLaunchProgram, TextField("page.exe") + TextField("folder") + TextField("")),
            kHostFailure);
  EXPECT_THAT(host_.expand_calls, ElementsAre(ExpandCall{true, L""}));
}

}  // namespace
}  // namespace brantel
