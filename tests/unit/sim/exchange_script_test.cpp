#include "sim/exchange_script.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <stdexcept>

namespace brantel::sim {
namespace {

std::string ErrorOf(const std::string& text) {
  try {
    ParseExchangeScript(text);
  } catch (const std::runtime_error& error) {
    return error.what();
  }
  return "none";
}

TEST(ExchangeScript, HasALineForAutomatedVoiceWhereItTellsOfNone) {
  const ExchangeScript script = ParseExchangeScript("# nothing\n\n");
  ASSERT_EQ(script.lines.size(), 1U);
  EXPECT_EQ(script.lines[0].media_modes, 8U);
  EXPECT_EQ(script.lines[0].version, 0x00020000U);
  EXPECT_TRUE(script.failures.empty());
  EXPECT_TRUE(script.events.empty());
  EXPECT_EQ(script.wave_device, 0U);
  EXPECT_EQ(script.keys_file, "");
  EXPECT_TRUE(ParseExchangeScript("no-lines").lines.empty());
}

TEST(ExchangeScript, TellsOfLines) {
  const ExchangeScript script = ParseExchangeScript(
      "line media-modes 4\r\n"
      "line version 0x00010004 capabilities-size 600\n"
      "line negotiation-error 0x80000042\n"
      "line capabilities-error 0x80000048\n");
  ASSERT_EQ(script.lines.size(), 4U);
  EXPECT_EQ(script.lines[0].media_modes, 4U);
  EXPECT_EQ(script.lines[1].version, 0x00010004U);
  EXPECT_EQ(script.lines[1].capabilities_size, 600U);
  EXPECT_EQ(script.lines[1].media_modes, 8U);
  EXPECT_EQ(script.lines[2].negotiation_error, 0x80000042U);
  EXPECT_EQ(script.lines[3].capabilities_error, 0x80000048U);
}

TEST(ExchangeScript, TellsOfFailures) {
  const ExchangeScript script =
      ParseExchangeScript("fails lineOpen 0x80000001\nfails lineClose 0x80000048 2\n");
  ASSERT_EQ(script.failures.size(), 2U);
  EXPECT_EQ(script.failures[0].function, "lineOpen");
  EXPECT_EQ(script.failures[0].error, 0x80000001U);
  EXPECT_EQ(script.failures[0].times, 0U);
  EXPECT_EQ(script.failures[1].times, 2U);
}

TEST(ExchangeScript, TellsOfFunctionsThatNeverHaveEnoughRoom) {
  EXPECT_TRUE(ParseExchangeScript("").never_enough.empty());
  const ExchangeScript script =
      ParseExchangeScript("never-enough lineGetDevCaps\nnever-enough lineGetID\n");
  EXPECT_THAT(script.never_enough, ::testing::ElementsAre("lineGetDevCaps", "lineGetID"));
  EXPECT_EQ(ErrorOf("never-enough"), "line 1: a word is missing");
}

TEST(ExchangeScript, TellsWhetherMessagesAreSent) {
  EXPECT_FALSE(ParseExchangeScript("").sends_messages);
  EXPECT_TRUE(ParseExchangeScript("sends-messages").sends_messages);
}

TEST(ExchangeScript, TellsOfEvents) {
  const ExchangeScript script = ParseExchangeScript(
      "at 0.25 call-state busy\n"
      "at 1 call-state 0x2000\n"
      "at 1.5 digit #\n"
      "at 2 line-close\n"
      "at 2.125 device-state 0x40\n"
      "at 3 reply 0 0x80000005\n"
      "at 3 message 19 1 2 3\n");
  ASSERT_EQ(script.events.size(), 7U);
  const auto expect = [&](std::size_t i, int delay, const char* description, std::uint32_t kind,
                          std::uint32_t first, std::uint32_t second) {
    const ExchangeEvent& event = script.events[i];
    EXPECT_EQ(event.delay, Time(delay));
    EXPECT_EQ(event.description, description);
    EXPECT_EQ(event.message.kind, kind);
    EXPECT_EQ(event.message.first, first);
    EXPECT_EQ(event.message.second, second);
  };
  expect(0, 250, "call-state busy", 2, 0x40, 0);
  expect(1, 1000, "call-state 0x2000", 2, 0x2000, 0);
  expect(2, 1500, "digit #", 0, 0, 0);
  EXPECT_EQ(script.events[2].key, '#');
  expect(3, 2000, "line-close", 3, 0, 0);
  expect(4, 2125, "device-state 0x40", 8, 0x40, 0);
  expect(5, 3000, "reply 0 0x80000005", 12, 0, 0x80000005);
  expect(6, 3000, "message 19 1 2 3", 19, 1, 2);
  EXPECT_EQ(script.events[6].message.third, 3U);
}

TEST(ExchangeScript, NamesTheWaveDeviceAndTheKeys) {
  const ExchangeScript script = ParseExchangeScript("wave-device 3\nkeys /tmp/keys\n");
  EXPECT_EQ(script.wave_device, 3U);
  EXPECT_EQ(script.keys_file, "/tmp/keys");
}

TEST(ExchangeScript, SaysWhichLineCannotBeUnderstood) {
  EXPECT_EQ(ErrorOf("wave-device"), "line 1: a word is missing");
  EXPECT_EQ(ErrorOf("\nwave-device three"), "line 2: no number: three");
  EXPECT_EQ(ErrorOf("wave-device 0x100000000"), "line 1: no number: 0x100000000");
  EXPECT_EQ(ErrorOf("line colour 3"), "line 1: no such ability: colour");
  EXPECT_EQ(ErrorOf("line version"), "line 1: a word is missing");
  EXPECT_EQ(ErrorOf("fails lineOpen"), "line 1: a word is missing");
  EXPECT_EQ(ErrorOf("at soon digit 5"), "line 1: no time: soon");
  EXPECT_EQ(ErrorOf("at -1 digit 5"), "line 1: no time: -1");
  EXPECT_EQ(ErrorOf("at 1 digit 55"), "line 1: no key: 55");
  EXPECT_EQ(ErrorOf("at 1 sneeze"), "line 1: no such event: sneeze");
  EXPECT_EQ(ErrorOf("at 1"), "line 1: a word is missing");
  EXPECT_EQ(ErrorOf("telephone"), "line 1: no such thing: telephone");
}

}  // namespace
}  // namespace brantel::sim
