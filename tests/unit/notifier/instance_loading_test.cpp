#include "notifier/instance_loading.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <array>

#include "instance/instance_codec.h"
#include "tests/unit/allocation_counter.h"
#include "tests/unit/failing_allocations.h"
#include "tests/unit/instance/fake_instance_files.h"
#include "tests/unit/notifier/fake_notifier_host.h"

namespace brantel {
namespace {

using ::testing::ElementsAre;

constexpr auto kFields = FieldsInFileOrder<1>({{.index = 0, .name = "text"}});
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

// Want of memory, too, is told.
TEST(LoadInstanceForAlert, LogsTheSameWhicheverAllocationFails) {
  FakeInstanceFiles files;
  Instance stored(1);
  stored.set_text(0, std::string(20'000, 'x'));
  InstanceLayout layout = kLayout;
  layout.text_reader = TextReader::kChunked;
  files.files["C:\\alerts\\night"] = EncodeInstance(layout, stored);
  std::size_t n = 0;
  for (bool failed = true; failed;) {
    FakeNotifierHost host;
    FailAllocation(++n);
    const auto loaded = LoadInstanceForAlert(files, layout, kArgument, &host);
    failed = !WillFailAllocation();
    FailAllocation(0);
    if (failed) {
      EXPECT_FALSE(loaded) << n;
      EXPECT_THAT(host.log, ElementsAre("C:\\alerts\\night",
                                        " - Failed to load notification from disk.", "\r"));
    } else {
      EXPECT_EQ(loaded, stored);
    }
  }
  EXPECT_GT(n, 4U);
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
