// Alerts of each class and protocol in a row.
#include <windows.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <optional>
#include <string>

#include "tests/far_ends/alert_sender.h"
#include "tests/far_ends/far_ends.h"
#include "tests/module/settings_key.h"
#include "tests/soak/soak.h"

namespace brantel {
namespace {

class SendSeries : public ::testing::TestWithParam<SampleAlert> {
 protected:
  // Expects that each succeeds and is delivered.
  void Send(unsigned count) {
    for (unsigned i = 0; i < count; ++i) {
      if (!sender_) sender_.emplace(module_, instances_, GetParam());
      ASSERT_EQ(sender_->Send(), AlertSender::Course::kDelivered) << sender_->DescribeLast();
      // Objects come and go as well.
      if (i % kAlertsOfAnObject == 0) sender_.reset();
    }
    sender_.reset();
  }

  static constexpr unsigned kAlertsOfAnObject = 100;

  const NoSettings no_beeper_settings_{kBeeperSettingsKey};
  const NoSettings no_pager_settings_{kPagerSettingsKey};
  const SampleInstances instances_;
  const LoadedModule module_;
  const FarEnds far_ends_{module_.handle()};
  std::optional<AlertSender> sender_;
};

INSTANTIATE_TEST_SUITE_P(Alerts, SendSeries, ::testing::ValuesIn(SampleAlerts()),
                         [](const auto& tested) { return std::string(tested.param.name); });

TEST_P(SendSeries, DeliversEachAndLeavesNothing) {
  const unsigned sends = Setting(L"SOAK_SENDS", 10000);
  const unsigned warm_up = std::max(sends / 10, 200U);
  ASSERT_NO_FATAL_FAILURE(Send(warm_up));
  const GrowthWatch watch;
  ASSERT_NO_FATAL_FAILURE(Send(sends));
  watch.ExpectNone(std::string(GetParam().name) + ", " + std::to_string(sends) + " delivered");
  EXPECT_TRUE(far_ends_.AreIdle());
  EXPECT_FALSE(far_ends_.modem.has_waited_for_ever());
  EXPECT_FALSE(far_ends_.telephone.has_waited_for_ever());
  EXPECT_EQ(module_.CanUnloadNow(), S_OK);
}

}  // namespace
}  // namespace brantel
