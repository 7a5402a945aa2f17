#include "framework/notifier.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <array>

#include "tests/unit/failing_allocations.h"
#include "tests/unit/framework/fake_instance_files.h"
#include "tests/unit/framework/fake_notifier_host.h"

namespace brantel {
namespace {

using ::testing::ElementsAre;

constexpr std::array<InstanceField, 1> kFields = {{{.name = "text"}}};
constexpr InstanceLayout kLayout = {.magic = ParseGuid("00112233-4455-6677-8899-AABBCCDDEEFF"),
                                    .fields = kFields};
const InstanceArgument kArgument = {u"C:\\alerts\\night", "C:\\alerts\\night"};

TEST(LoadInstanceForAlert, LogsPathReasonAndLineEndWhenTheFileIsMissing) {
  FakeInstanceFiles files;
  FakeNotifierHost host;
  EXPECT_FALSE(LoadInstanceForAlert(files, kLayout, kArgument, &host));
  EXPECT_THAT(host.log,
              ElementsAre("C:\\alerts\\night", " - Failed to load notification from disk.", "\r"));
}

TEST(LoadInstanceForAlert, LogsTheSameWhenTheFileIsAnotherClasss) {
  FakeInstanceFiles files;
  files.files["C:\\alerts\\night"] = std::string(40, 'x');
  FakeNotifierHost host;
  EXPECT_FALSE(LoadInstanceForAlert(files, kLayout, kArgument, &host));
  EXPECT_THAT(host.log,
              ElementsAre("C:\\alerts\\night", " - Failed to load notification from disk.", "\r"));
}

TEST(LoadInstanceForAlert, LogsNothingWithoutAHost) {
  FakeInstanceFiles files;
  EXPECT_FALSE(LoadInstanceForAlert(files, kLayout, kArgument, nullptr));
}

TEST(LoadInstanceForAlert, FailsAsEverWhenThereIsNoMemoryForTheLog) {
  FakeInstanceFiles files;
  std::size_t failures = 0;
  ForEachLogAllocation([&](std::size_t allocation) {
    FakeNotifierHost host;
    EXPECT_FALSE(LoadInstanceForAlert(files, kLayout, kArgument, &host));
    EXPECT_GE(host.log.size(), 2U);
    failures = allocation;
  });
  EXPECT_GT(failures, 3U);
}

TEST(LoadInstanceForAlert, ReadsTheFileOnce) {
  FakeInstanceFiles files;
  Instance stored(1);
  stored.set_text(0, "value");
  files.files["C:\\alerts\\night"] = EncodeInstance(kLayout, stored);
  FakeNotifierHost host;
  EXPECT_EQ(LoadInstanceForAlert(files, kLayout, kArgument, &host), stored);
  EXPECT_THAT(files.calls, ElementsAre("read C:\\alerts\\night"));
  EXPECT_TRUE(host.calls.empty());
}

}  // namespace
}  // namespace brantel
