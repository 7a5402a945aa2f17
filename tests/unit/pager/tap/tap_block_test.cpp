#include "pager/tap/tap_block.h"

#include <gtest/gtest.h>

#include <string>
#include <string_view>

#include "pager/tap/tap_session.h"

namespace brantel {
namespace {

using namespace std::string_view_literals;

TEST(TapChecksum, IsThatOfPublishedExamples) {
  EXPECT_EQ(TapChecksum("\x02"
                        "123\rABC\r\x03"sv),
            "17;");
  EXPECT_EQ(TapChecksum("\x02"
                        "1\rTEST\r\x03"sv),
            "190");
  EXPECT_EQ(TapChecksum("\x02"
                        "123\rHI\r\x03"sv),
            "146");
}

TEST(TapChecksum, TakesBytesAsUnsignedAndDropsTheSumsHighBits) {
  EXPECT_EQ(TapChecksum(""), "000");
  EXPECT_EQ(TapChecksum("\xFF"), "0??");
  EXPECT_EQ(TapChecksum(std::string(16, '\xFF') + "\x0F"), "???");
  EXPECT_EQ(TapChecksum(std::string(16, '\xFF') + "\x10"), "000");
  EXPECT_EQ(TapChecksum(std::string(16, '\xFF') + "\x11"), "001");
}

TEST(BuildTapBlock, FramesIdAndMessage) {
  EXPECT_EQ(BuildTapBlock("123", "ABC", kTap.block),
            "\x02"
            "123\rABC\r\x03"
            "17;\r");
  EXPECT_EQ(BuildTapBlock("1", "TEST", kSmsTap.block),
            "\x02"
            "1\rTEST\r\x03"
            "190\r");
}

std::string FieldsOf(std::string_view pager_id, std::string_view message,
                     const TapBlockRules& rules) {
  const std::string block = BuildTapBlock(pager_id, message, rules);
  // Between STX and the last CR, ETX, checksum and CR.
  return block.substr(1, block.size() - 1 - 6);
}

struct IdCase {
  std::string_view pager_id;
  std::string_view tap;
  std::string_view sms_tap;
};

void PrintTo(const IdCase& id_case, std::ostream* stream) {
  *stream << ::testing::PrintToString(id_case.pager_id);
}

class TapPagerIdTest : public ::testing::TestWithParam<IdCase> {};

INSTANTIATE_TEST_SUITE_P(Ids, TapPagerIdTest,
                         ::testing::Values(IdCase{"0041 79-123", "004179123", "4179123"},
                                           IdCase{"+41 (79) 123", "4179123", "4179123"},
                                           IdCase{"  007", "007", "7"}, IdCase{"100", "100", "100"},
                                           IdCase{"000", "000", ""}, IdCase{"Ann", "", ""},
                                           IdCase{"a9b0c0", "900", "900"},
                                           IdCase{"12/:\xB9", "12", "12"}));

TEST_P(TapPagerIdTest, KeepsItsDigits) {
  EXPECT_EQ(FieldsOf(GetParam().pager_id, "x", kTap.block), std::string(GetParam().tap) + "\rx");
  EXPECT_EQ(FieldsOf(GetParam().pager_id, "x", kSmsTap.block),
            std::string(GetParam().sms_tap) + "\rx");
}

TEST(BuildTapBlock, KeepsPrintableAsciiAndMakesBlanksOfCarriageReturns) {
  std::string every_byte;
  for (int byte = 0; byte < 256; ++byte) {
    every_byte += static_cast<char>(byte);
  }
  std::string printable = " ";
  for (char c = ' '; c <= '~'; ++c) {
    printable += c;
  }
  EXPECT_EQ(FieldsOf("1", every_byte, kTap.block), "1\r" + printable);
  EXPECT_EQ(FieldsOf("1", "A\r\nB", kTap.block), "1\rA B");
}

struct LengthCase {
  const TapBlockRules* rules;
  std::size_t id;
  std::size_t most;
};

class TapLengthTest : public ::testing::TestWithParam<LengthCase> {};

INSTANTIATE_TEST_SUITE_P(
    Lengths, TapLengthTest,
    ::testing::Values(LengthCase{&kTap.block, 9, 240}, LengthCase{&kTap.block, 1, 248},
                      LengthCase{&kTap.block, 248, 1}, LengthCase{&kTap.block, 249, 0},
                      LengthCase{&kTap.block, 250, 0}, LengthCase{&kTap.block, 1000, 0},
                      LengthCase{&kSmsTap.block, 9, 150}, LengthCase{&kSmsTap.block, 158, 1},
                      LengthCase{&kSmsTap.block, 159, 0}, LengthCase{&kSmsTap.block, 1000, 0}));

TEST_P(TapLengthTest, CutsTheMessageToTheBlock) {
  const auto& [rules, id_length, most] = GetParam();
  const std::string id(id_length, '7');
  for (const std::size_t length : {most, most + 1, most + 500}) {
    // What is dropped anyway takes no room.
    std::string message = "\n\xE4";
    message += std::string(length, 'x');
    EXPECT_EQ(FieldsOf(id, message, *rules), id + "\r" + std::string(most, 'x'));
  }
}

}  // namespace
}  // namespace brantel
