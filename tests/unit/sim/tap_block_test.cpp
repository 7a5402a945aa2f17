#include "sim/tap_block.h"

#include <gtest/gtest.h>

namespace brantel::sim {
namespace {

std::string FaultOfBlock(const std::string& block) {
  const auto reading = ReadTapBlock(block);
  const auto* const fault = std::get_if<TapFault>(&reading);
  if (fault == nullptr) return "none";
  return (fault->answer == tap::kNak ? "NAK " : "RS ") + fault->what;
}

TEST(TapBlockSize, IsThatOfTheFirstBlockWhenItIsComplete) {
  const std::string block =
      "\x02"
      "123\rABC\r\x03"
      "17;\r";
  for (std::size_t size = 0; size < block.size(); ++size) {
    EXPECT_EQ(TapBlockSize(block.substr(0, size)), 0U) << size;
  }
  EXPECT_EQ(TapBlockSize(block), block.size());
  EXPECT_EQ(TapBlockSize(block + block), block.size());
  EXPECT_EQ(TapBlockSize("\x02"
                         "1\x17"
                         "123\r\x03"),
            7U);
  EXPECT_EQ(TapBlockSize("\x02"
                         "1\x1F"
                         "123\r\x03"),
            7U);
}

TEST(ReadTapBlock, TakesWhatThePublishedExamplesHold) {
  const auto first = ReadTapBlock(
      "\x02"
      "123\rABC\r\x03"
      "17;\r");
  ASSERT_TRUE(std::holds_alternative<TapPage>(first));
  EXPECT_EQ(std::get<TapPage>(first).pager_id, "123");
  EXPECT_EQ(std::get<TapPage>(first).text, "ABC");
  const auto second = ReadTapBlock(
      "\x02"
      "1\rTEST\r\x03"
      "190\r");
  ASSERT_TRUE(std::holds_alternative<TapPage>(second));
  EXPECT_EQ(std::get<TapPage>(second).text, "TEST");
}

TEST(ReadTapBlock, AsksForABlockAgainThatWasDamaged) {
  EXPECT_EQ(FaultOfBlock("\x02"
                         "123\rABD\r\x03"
                         "17;\r"),
            "NAK checksum 17; instead of 17<");
  EXPECT_EQ(FaultOfBlock("\x02"
                         "123\rABC\r\x03"
                         "17:\r"),
            "NAK checksum 17: instead of 17;");
  EXPECT_EQ(FaultOfBlock("\x02"
                         "123\rABC\r\x03"
                         "17;\n"),
            "NAK no CR behind the checksum");
  EXPECT_EQ(FaultOfBlock("123\rABC\r\x03"
                         "179\r"),
            "NAK no STX");
}

TEST(ReadTapBlock, RefusesAPageThatIsNoneOfOneBlock) {
  EXPECT_EQ(FaultOfBlock("\x02\rABC\r\x03"
                         "0>5\r"),
            "RS no pager ID");
  EXPECT_EQ(FaultOfBlock("\x02"
                         "12a\rABC\r\x03"
                         "1:9\r"),
            "RS no pager ID");
  EXPECT_EQ(FaultOfBlock("\x02"
                         "123\rA\tC\r\x03"
                         "142\r"),
            "RS a sign that is no text");
  EXPECT_EQ(FaultOfBlock("\x02"
                         "123\rABC\x03"
                         "16>\r"),
            "RS not two fields");
  EXPECT_EQ(FaultOfBlock("\x02"
                         "123\rABC\r\x17"
                         "18?\r"),
            "RS a page of several blocks");
}

TEST(ReadTapBlock, TakesContentOf250Signs) {
  EXPECT_EQ(FaultOfBlock("\x02"
                         "1234\r" +
                         std::string(245, 'x') +
                         "\r\x03"
                         "3<1\r"),
            "none");
  EXPECT_EQ(FaultOfBlock("\x02"
                         "1234\r" +
                         std::string(246, 'x') +
                         "\r\x03"
                         "439\r"),
            "RS too long");
}

}  // namespace
}  // namespace brantel::sim
