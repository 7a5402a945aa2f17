#include "notifier/alert_guard.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <new>

#include "tests/unit/notifier/fake_notifier_host.h"

namespace brantel {
namespace {

using ::testing::ElementsAre;
using ::testing::IsEmpty;

TEST(GuardAlert, PassesOnWhatTheDeliveryAnswers) {
  constexpr auto kHostFailure = static_cast<Result>(0x80070057);
  FakeNotifierHost host;
  EXPECT_EQ(GuardAlert(&host, [] { return kOk; }), kOk);
  EXPECT_EQ(GuardAlert(&host, [] { return kHostFailure; }), kHostFailure);
  EXPECT_THAT(host.log, IsEmpty());
}

TEST(GuardAlert, TellsTheHostWhyMemoryThatRunsOutEndsTheAlert) {
  FakeNotifierHost host;
  EXPECT_EQ(GuardAlert(&host, []() -> Result { throw std::bad_alloc(); }), kFail);
  EXPECT_THAT(host.log, ElementsAre("Failed alloc memory data\r\n"));
}

TEST(GuardAlert, FailsWithoutAHostToo) {
  EXPECT_EQ(GuardAlert(nullptr, []() -> Result { throw std::bad_alloc(); }), kFail);
}

}  // namespace
}  // namespace brantel
