#include "notifier/sockets_binding.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <memory>
#include <new>
#include <string>
#include <vector>

#include "tests/unit/notifier/fake_notifier_host.h"
#include "tests/unit/system/fake_sockets_library.h"

namespace brantel {
namespace {

using ::testing::ElementsAre;

class BindWithSocketsTest : public ::testing::Test {
 protected:
  BindWithSocketsTest() { sockets_.calls = &calls_; }

  std::vector<std::string> calls_;
  FakeSocketsLibrary sockets_;
};

TEST_F(BindWithSocketsTest, LeavesTheLibraryStartedForTheHost) {
  const auto host = std::make_shared<FakeNotifierHost>();
  EXPECT_EQ(BindWithSockets(sockets_, [&] { return host; }), host);
  EXPECT_THAT(calls_, ElementsAre("start"));
}

TEST_F(BindWithSocketsTest, StopsTheLibraryWithoutAHost) {
  EXPECT_EQ(BindWithSockets(sockets_, [] { return nullptr; }), nullptr);
  EXPECT_THAT(calls_, ElementsAre("start", "stop"));
}

TEST_F(BindWithSocketsTest, StopsTheLibraryWithoutMemoryForTheHost) {
  const auto query = []() -> std::shared_ptr<NotifierHost> { throw std::bad_alloc(); };
  EXPECT_THROW(BindWithSockets(sockets_, query), std::bad_alloc);
  EXPECT_THAT(calls_, ElementsAre("start", "stop"));
}

TEST_F(BindWithSocketsTest, StopsNothingThatDidNotStart) {
  sockets_.starts = false;
  EXPECT_EQ(BindWithSockets(sockets_, [] { return std::make_shared<FakeNotifierHost>(); }),
            nullptr);
  EXPECT_THAT(calls_, ElementsAre("start"));
}

class SocketsInUseTest : public BindWithSocketsTest {};

TEST_F(SocketsInUseTest, StopsTheLibraryInTheEnd) {
  {
    const SocketsInUse in_use(sockets_);
    EXPECT_TRUE(in_use.HasStarted());
    EXPECT_THAT(calls_, ElementsAre("start"));
  }
  EXPECT_THAT(calls_, ElementsAre("start", "stop"));
}

TEST_F(SocketsInUseTest, StopsNothingThatDidNotStart) {
  sockets_.starts = false;
  EXPECT_FALSE(SocketsInUse(sockets_).HasStarted());
  EXPECT_THAT(calls_, ElementsAre("start"));
}

}  // namespace
}  // namespace brantel
