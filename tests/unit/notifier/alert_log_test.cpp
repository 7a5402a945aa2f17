#include "notifier/alert_log.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <memory>
#include <new>
#include <stdexcept>
#include <string>

#include "tests/unit/failing_allocations.h"
#include "tests/unit/notifier/fake_notifier_host.h"
#include "text/string_table.h"

namespace brantel {
namespace {

using ::testing::ElementsAre;
using ::testing::IsEmpty;

void LogOneOfEachKind(const AlertLog& log) {
  log.Text("plain");
  log.Text(u"wide");
  log.Line(text_id::kSuccess);
  log.Format(text_id::kPortInUse, {19U});
  log.Inserts(text_id::kSendingMail, {"192.0.2.25", "ann@example.org"});
  log.Quoted(text_id::kReturned, "OK");
  log.Failure(text_id::kWriteError, 4294967295U);
  log.Made([] { return std::string("made"); });
}

TEST(AlertLog, TellsTheHostEachTextAsItIsMade) {
  FakeNotifierHost host;
  LogOneOfEachKind(AlertLog(&host));
  EXPECT_THAT(host.log,
              ElementsAre("plain", "wide", "success\r\n", "port in use, delaying 19\r\n",
                          "sending msg via 192.0.2.25 to ann@example.org\r\n",
                          "returned \"OK\"\r\n", "comm write error 4294967295\r\n", "made"));
}

TEST(AlertLog, MakesNoTextWithoutAHost) {
  NotifierHost* const nobody = nullptr;
  LogOneOfEachKind(AlertLog(nobody));
  AlertLog(nobody).Made([]() -> std::string { throw std::runtime_error("made for nobody"); });
}

TEST(AlertLog, LeavesOutALineForWhichThereIsNoMemory) {
  std::size_t failures = 0;
  ForEachLogAllocation([&](std::size_t allocation) {
    FakeNotifierHost host;
    LogOneOfEachKind(AlertLog(&host));
    failures = allocation;
    EXPECT_GE(host.log.size(), 7U);
  });
  EXPECT_GT(failures, 8U);
}

TEST(AlertLog, GoesOnWhateverTheMakerOfATextThrows) {
  FakeNotifierHost host;
  const AlertLog log(&host);
  log.Made([]() -> std::string { throw std::runtime_error("no text"); });
  EXPECT_THAT(host.log, IsEmpty());
  log.Text("next");
  EXPECT_THAT(host.log, ElementsAre("next"));
}

TEST(AlertLog, KeepsASharedHostWhileItLives) {
  auto host = std::make_shared<FakeNotifierHost>();
  const std::weak_ptr<FakeNotifierHost> watch = host;
  {
    const AlertLog log(std::move(host));
    EXPECT_FALSE(watch.expired());
    log.Text("told");
  }
  EXPECT_TRUE(watch.expired());
}

}  // namespace
}  // namespace brantel
