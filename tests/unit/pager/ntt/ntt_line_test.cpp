#include "pager/ntt/ntt_line.h"

#include <gtest/gtest.h>

#include <string>
#include <string_view>

namespace brantel {
namespace {

std::string Repeat(std::string_view text, std::size_t times) {
  std::string repeated;
  for (std::size_t i = 0; i < times; ++i) {
    repeated += text;
  }
  return repeated;
}

const std::string kA = "\x82\xA0";  // a hiragana

TEST(BuildNttLine, BuildsTheWorkedExample) {
  EXPECT_EQ(BuildNttLine("03-1234-5678", "7", "TEST"),
            "8000C00000********,10000,0312345678AAAAA,0007,004TEST\r");
}

struct FieldCase {
  std::string_view text;
  std::string_view field;
};

void PrintTo(const FieldCase& field_case, std::ostream* stream) {
  *stream << ::testing::PrintToString(field_case.text);
}

class NttPagerIdTest : public ::testing::TestWithParam<FieldCase> {};

INSTANTIATE_TEST_SUITE_P(Ids, NttPagerIdTest,
                         ::testing::Values(FieldCase{"", "AAAAAAAAAAAAAAA"},
                                           FieldCase{"Ann", "AAAAAAAAAAAAAAA"},
                                           FieldCase{"1", "1AAAAAAAAAAAAAA"},
                                           FieldCase{"12345678901234", "12345678901234A"},
                                           FieldCase{"123456789012345", "123456789012345"},
                                           FieldCase{"12345678901234567890", "123456789012345"},
                                           FieldCase{"+1-2\xB1,3", "123AAAAAAAAAAAA"}));

TEST_P(NttPagerIdTest, HasFifteenCharacters) {
  EXPECT_EQ(BuildNttLine(GetParam().text, "1234", "x"),
            "8000C00000********,10000," + std::string(GetParam().field) + ",1234,001x\r");
}

class NttPasswordTest : public ::testing::TestWithParam<FieldCase> {};

INSTANTIATE_TEST_SUITE_P(Passwords, NttPasswordTest,
                         ::testing::Values(FieldCase{"", "AAAA"}, FieldCase{"7", "0007"},
                                           FieldCase{"12", "0012"}, FieldCase{"123", "0123"},
                                           FieldCase{"1234", "1234"}, FieldCase{"12345", "1234"},
                                           FieldCase{"a ", "00a "}));

TEST_P(NttPasswordTest, HasFourCharacters) {
  EXPECT_EQ(BuildNttLine("1", GetParam().text, "x"), "8000C00000********,10000,1AAAAAAAAAAAAAA," +
                                                         std::string(GetParam().field) + ",001x\r");
}

TEST(BuildNttLine, TellsTheMessagesLengthInBytes) {
  const auto end_of = [](const std::string& message) {
    return BuildNttLine("1", "", message).substr(25 + 15 + 1 + 4 + 1);
  };
  EXPECT_EQ(end_of(""), "000\r");
  EXPECT_EQ(end_of(kA), "002" + kA + "\r");
  EXPECT_EQ(end_of(std::string(100, 'x')), "100" + std::string(100, 'x') + "\r");
  EXPECT_EQ(end_of("100 %s %%"), "009100 %s %%\r");
}

TEST(NttMessage, IsShiftJisWhateverItWas) {
  EXPECT_EQ(NttMessage("TEST"), "TEST");
  EXPECT_EQ(NttMessage("\xA4\xA2"), kA);
  EXPECT_EQ(NttMessage("\x1B$B$\"\x1B(B"), kA);
  EXPECT_EQ(NttMessage("\x1B$@$\"\x1B(J"), kA);
  EXPECT_EQ(NttMessage("\x1BK$\"\x1BH"), kA);
  EXPECT_EQ(NttMessage(kA), kA);
  EXPECT_EQ(NttMessage(""), "");
}

TEST(NttMessage, IsCutToAHundredBytesOfWholeCharacters) {
  EXPECT_EQ(NttMessage(std::string(100, 'x')), std::string(100, 'x'));
  EXPECT_EQ(NttMessage(std::string(101, 'x')), std::string(100, 'x'));
  EXPECT_EQ(NttMessage(Repeat(kA, 50)), Repeat(kA, 50));
  EXPECT_EQ(NttMessage(Repeat(kA, 60)), Repeat(kA, 50));
  EXPECT_EQ(NttMessage("x" + Repeat(kA, 49)), "x" + Repeat(kA, 49));
  EXPECT_EQ(NttMessage("x" + Repeat(kA, 50)), "x" + Repeat(kA, 49));
  EXPECT_EQ(NttMessage("x" + Repeat("\xA4\xA2", 60)), "x" + Repeat(kA, 49));
}

TEST(NttMessage, IsCutAfterItsConversion) {
  // 60 characters of JIS are 126 bytes with their escapes, and 120 without.
  EXPECT_EQ(NttMessage("\x1B$B" + Repeat("$\"", 60) + "\x1B(B"), Repeat(kA, 50));
  // Half-width katakana lose a byte each.
  EXPECT_EQ(NttMessage(Repeat("\x8E\xB1", 100) + "\xA4\xF2"), Repeat("\xB1", 100));
}

TEST(NttMessage, TakesTextsThatFillTheConversionsRoom) {
  for (const std::size_t size : {998U, 999U, 1000U, 1001U, 5000U}) {
    EXPECT_EQ(NttMessage(std::string(size, 'x')), std::string(100, 'x'));
    EXPECT_EQ(NttMessage("x" + Repeat(kA, size)), "x" + Repeat(kA, 49));
  }
}

TEST(NttMessage, HasNoLineEnds) {
  EXPECT_EQ(NttMessage("A\r\nB\nC\r"), "A  B C ");
  EXPECT_EQ(NttMessage("\x1B$B$\"\r\n$\"\x1B(B"), kA + "  $\"");
}

}  // namespace
}  // namespace brantel
