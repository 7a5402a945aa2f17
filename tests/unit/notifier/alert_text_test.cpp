#include "notifier/alert_text.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "tests/unit/notifier/fake_notifier_host.h"

namespace brantel {
namespace {

using ::testing::ElementsAre;
using ::testing::IsEmpty;

constexpr Result kHostFailure = static_cast<Result>(0x80070057);

TEST(ComposeAlertText, ExpandsTheEventTemplateAndThenAsksForTheTrigger) {
  FakeNotifierHost host;
  host.expansions = {{kOk, "router is down"}};
  host.trigger_word = 2;

  const AlertComposition composition = ComposeAlertText(host, "%C", "fallback");

  ASSERT_TRUE(composition.alert);
  EXPECT_EQ(composition.alert->kind, AlertKind::kDown);
  EXPECT_EQ(composition.alert->text, "router is down");
  EXPECT_THAT(host.calls, ElementsAre("expand", "trigger"));
  EXPECT_THAT(host.expanded_templates, ElementsAre("%C"));
}

TEST(ComposeAlertText, GoesOnWhenTheEventTemplateCannotBeExpanded) {
  FakeNotifierHost host;
  host.expansions = {{kHostFailure, ""}};
  host.trigger_word = 1;

  const AlertComposition composition = ComposeAlertText(host, "%C", "fallback");

  ASSERT_TRUE(composition.alert);
  EXPECT_EQ(composition.alert->kind, AlertKind::kUp);
  EXPECT_EQ(composition.alert->text, "%C");
}

TEST(ComposeAlertText, LogsAnUnhandledTriggerAndSucceedsWithoutAnAlert) {
  for (const std::uint32_t word : {0U, 32U, 0xFFFFFFE0U}) {
    FakeNotifierHost host;
    host.trigger_word = word;

    const AlertComposition composition = ComposeAlertText(host, "%C", "fallback");

    EXPECT_FALSE(composition.alert) << word;
    EXPECT_EQ(composition.result, 0) << word;
    EXPECT_THAT(host.log,
                ElementsAre("Currently an unhandled alert trigger - future enhancement.\n"));
  }
}

TEST(ComposeAlertText, ExpandsTheFallbackWhenThereIsNoEvent) {
  FakeNotifierHost host;
  host.trigger_result = kFail;
  host.expansions = {{kOk, "unused"}, {kOk, "expanded fallback"}};

  const AlertComposition composition = ComposeAlertText(host, "%C", "fallback");

  ASSERT_TRUE(composition.alert);
  EXPECT_EQ(composition.alert->kind, std::nullopt);
  EXPECT_EQ(composition.alert->text, "expanded fallback");
  EXPECT_THAT(host.expanded_templates, ElementsAre("%C", "fallback"));
  EXPECT_THAT(host.log, IsEmpty());
}

TEST(ComposeAlertText, EndsWithTheHostsResultWhenTheFallbackCannotBeExpanded) {
  FakeNotifierHost host;
  host.trigger_result = kFail;
  host.expansions = {{kOk, "unused"}, {kHostFailure, ""}};

  const AlertComposition composition = ComposeAlertText(host, "%C", "fallback");

  EXPECT_FALSE(composition.alert);
  EXPECT_EQ(composition.result, kHostFailure);
  EXPECT_THAT(host.log, IsEmpty());
}

}  // namespace
}  // namespace brantel
