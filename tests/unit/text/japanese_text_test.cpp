#include "text/japanese_text.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cstdint>
#include <random>
#include <string>
#include <string_view>

namespace brantel {
namespace {

using namespace std::string_view_literals;

std::string Repeat(std::string_view text, std::size_t times) {
  std::string repeated;
  for (std::size_t i = 0; i < times; ++i) {
    repeated += text;
  }
  return repeated;
}

struct Conversion {
  std::string_view name;
  std::string_view from;
  std::string_view to;
};

std::string NameOfConversion(const ::testing::TestParamInfo<Conversion>& conversion) {
  return std::string(conversion.param.name);
}

constexpr Conversion kFromEucJp[] = {
    {"Empty", ""sv, ""sv},
    {"Ascii", "device down\r\n"sv, "device down\r\n"sv},
    {"Hiragana", "\xA4\xA2"sv, "\x82\xA0"sv},
    {"FirstCell", "\xA1\xA1"sv, "\x81\x40"sv},
    {"LastCell", "\xFE\xFE"sv, "\xEF\xFC"sv},
    {"LastTrailBelow7F", "\xA1\xDF"sv, "\x81\x7E"sv},
    {"FirstTrailBehind7F", "\xA1\xE0"sv, "\x81\x80"sv},
    {"LastRowOfTheLowLeadBytes", "\xDE\xFE"sv, "\x9F\xFC"sv},
    {"FirstRowOfTheHighLeadBytes", "\xDF\xA1"sv, "\xE0\x40"sv},
    {"KanjiAmongAscii",
     "a\xB4\xC1\xBB\xFA"
     "b"sv,
     "a\x8A\xBF\x8E\x9A"
     "b"sv},
    {"HalfWidthKatakana", "\x8E\xB1\x8E\xDE"sv, "\xB1\xDE"sv},
    {"ShiftBeforeSomethingElse",
     "\x8E\xE0z\x8E"
     "9z"sv,
     "\x8E\xE0z\x8E"
     "9z"sv},
    {"ShiftAtTheEnd", "a\x8E"sv, "a\x8E"sv},
    {"PairCutShort", "\xA4\xA2\xA4"sv, "\x82\xA0\xA4"sv},
    {"PairWithForeignSecondByte", "\xA4 \xA4\xA2"sv, "\xA4 \x82\xA0"sv},
    {"SecondByteA0", "\xA4\xA0\xA4\xA2"sv, "\xA4\xA0\x82\xA0"sv},
    {"SecondByteFF", "\xA4\xFF\xA4\xA2"sv, "\xA4\xFF\x82\xA0"sv},
    {"SupplementaryPlane", "\x8F\xB0\xA1"sv, "\x8F\x88\x9F"sv},
    {"Nul", "\xA4\xA2\0\xA4\xA2"sv, "\x82\xA0\0\x82\xA0"sv},
};

class EucJpToShiftJisTest : public ::testing::TestWithParam<Conversion> {};

INSTANTIATE_TEST_SUITE_P(Texts, EucJpToShiftJisTest, ::testing::ValuesIn(kFromEucJp),
                         NameOfConversion);

TEST_P(EucJpToShiftJisTest, Converts) {
  EXPECT_EQ(EucJpToShiftJis(GetParam().from), GetParam().to);
}

// So that the text meets the conversion of several characters at a time in every position.
TEST_P(EucJpToShiftJisTest, ConvertsBehindAndBeforeOtherText) {
  const std::string from(GetParam().from);
  const std::string to(GetParam().to);
  for (std::size_t before = 0; before < 17; ++before) {
    for (std::size_t behind = 0; behind < 17; ++behind) {
      // A line end keeps what comes behind from completing what was cut short.
      EXPECT_EQ(EucJpToShiftJis(std::string(before, 'x') + from + '\n' + std::string(behind, 'y')),
                std::string(before, 'x') + to + '\n' + std::string(behind, 'y'));
      EXPECT_EQ(
          EucJpToShiftJis(Repeat("\xA4\xA2", before) + from + '\n' + Repeat("\xA4\xA2", behind)),
          Repeat("\x82\xA0", before) + to + '\n' + Repeat("\x82\xA0", behind));
    }
  }
}

// The definition, one character at a time.
std::string ConvertPlainly(std::string_view text) {
  std::string converted;
  const auto is_euc = [](int byte) { return byte >= 0xA1 && byte <= 0xFE; };
  for (std::size_t i = 0; i < text.size(); ++i) {
    const int c1 = static_cast<std::uint8_t>(text[i]);
    const int c2 = i + 1 < text.size() ? static_cast<std::uint8_t>(text[i + 1]) : -1;
    if (c1 == 0x8E && c2 >= 0) {
      if (c2 < 0xA1 || c2 > 0xDF) converted += static_cast<char>(c1);
      converted += static_cast<char>(c2);
      ++i;
    } else if (is_euc(c1) && is_euc(c2)) {
      const int row = c1 - 0xA1;
      const int cell = c2 - 0xA1;
      const int lead = row / 2 + (row < 62 ? 0x81 : 0xC1);
      int trail = row % 2 == 1 ? cell + 0x9F : cell + 0x40;
      if (row % 2 == 0 && trail >= 0x7F) ++trail;
      converted += static_cast<char>(lead);
      converted += static_cast<char>(trail);
      ++i;
    } else {
      converted += static_cast<char>(c1);
    }
  }
  return converted;
}

TEST(EucJpToShiftJis, ConvertsArbitraryBytesByItsDefinition) {
  std::mt19937 random(1978);
  constexpr std::string_view kTelling = "\x8E\xA0\xA1\xA4\xDF\xFE\xFF\x80\x7F\x1B ab\n";
  for (int round = 0; round < 20000; ++round) {
    std::string text(random() % 40, '\0');
    const auto kind = random() % 3;
    for (char& c : text) {
      if (kind == 0) c = static_cast<char>(random() % 256);
      if (kind == 1) c = kTelling[random() % kTelling.size()];
      if (kind == 2) c = static_cast<char>(random() % 16 == 0 ? ' ' : 0xA1 + random() % 94);
    }
    ASSERT_EQ(EucJpToShiftJis(text), ConvertPlainly(text)) << "round " << round;
  }
}

constexpr Conversion kFromJis[] = {
    {"Empty", ""sv, ""sv},
    {"Ascii", "device down\r\n"sv, "device down\r\n"sv},
    {"NewForm", "a\x1B$B4A;z\x1B(Bb"sv,
     "a\x8A\xBF\x8E\x9A"
     "b"sv},
    {"OldForm", "a\x1B$@4A;z\x1B(Jb"sv,
     "a\x8A\xBF\x8E\x9A"
     "b"sv},
    {"EscKForm", "a\x1BK4A;z\x1BHb"sv,
     "a\x8A\xBF\x8E\x9A"
     "b"sv},
    {"Unclosed", "\x1B$B4A"sv, "\x8A\xBF"sv},
    {"EndedByCarriageReturn", "\x1B$B4A\r4A"sv, "\x8A\xBF\r4A"sv},
    {"EndedByLineFeed", "\x1B$B4A\n4A"sv, "\x8A\xBF\n4A"sv},
    {"EndedByAnotherEscape", "\x1B$B4A\x1BX4A"sv,
     "\x8A\xBF"
     "4A"sv},
    {"PairCutShort", "\x1B$B4A;"sv, "\x8A\xBF;"sv},
    {"PairCutShortByTheLine", "\x1B$B4A\r\n;z"sv, "\x8A\xBF\r\n;z"sv},
    {"EscapeAtTheEnd", "ab\x1B"sv, "ab"sv},
    {"EscapeSequenceCutShort", "ab\x1B$"sv, "ab"sv},
    {"OddRowsAndEvenRows", "\x1B$B!!\"!~~\x1B(B"sv, "\x81\x40\x81\x9F\xEF\xFC"sv},
    {"EightBitBytesOutsideKanji", "\x82\xA0"sv, "\x82\xA0"sv},
};

class JisToShiftJisTest : public ::testing::TestWithParam<Conversion> {};

INSTANTIATE_TEST_SUITE_P(Texts, JisToShiftJisTest, ::testing::ValuesIn(kFromJis), NameOfConversion);

TEST_P(JisToShiftJisTest, Converts) {
  EXPECT_EQ(JisToShiftJis(GetParam().from), GetParam().to);
}

constexpr Conversion kFromAnything[] = {
    {"ShiftJisStays", "\x82\xA0\xFA\x40\xB1"sv, "\x82\xA0\xFA\x40\xB1"sv},
    {"EucJp", "\xB4\xC1\xBB\xFA"sv, "\x8A\xBF\x8E\x9A"sv},
    {"UndecidedIsTakenForEucJp", "\xA4\xA2\xA4\xA4"sv, "\x82\xA0\x82\xA2"sv},
    {"TwoKatakanaAreTakenForEucJp", "\xB1\xB2"sv, "\x89\x51"sv},
    {"JisNew", "\x1B$B4A\x1B(B"sv, "\x8A\xBF"sv},
    {"JisOld", "\x1B$@4A\x1B(J"sv, "\x8A\xBF"sv},
    {"JisEscK", "\x1BK4A\x1BH"sv, "\x8A\xBF"sv},
    {"Ascii", "TEST"sv, "TEST"sv},
    {"AsciiWithAnEscape", "TE\x1B(BST"sv, "TEST"sv},
};

class ToShiftJisTest : public ::testing::TestWithParam<Conversion> {};

INSTANTIATE_TEST_SUITE_P(Texts, ToShiftJisTest, ::testing::ValuesIn(kFromAnything),
                         NameOfConversion);

TEST_P(ToShiftJisTest, ConvertsByWhatTheTextSeemsToBe) {
  EXPECT_EQ(ToShiftJis(GetParam().from), GetParam().to);
}

TEST(CutShiftJis, LeavesAConvertedTextThatFits) {
  const std::string text = "a" + Repeat("\x82\xA0", 499);
  ASSERT_EQ(text.size(), 999U);
  EXPECT_EQ(CutShiftJis(text, kConvertedTextCut), text);
}

TEST(CutShiftJis, CutsAConvertedTextWhereNoCharacterOfTwoBytesStands) {
  EXPECT_EQ(CutShiftJis(std::string(1000, 'x'), kConvertedTextCut), std::string(999, 'x'));
  EXPECT_EQ(CutShiftJis(std::string(5000, 'x'), kConvertedTextCut), std::string(999, 'x'));
}

TEST(CutShiftJis, CutsAConvertedTextTwoBytesBackBeforeALeadByte) {
  const std::string text = "a" + Repeat("\x82\xA0", 600);
  EXPECT_EQ(CutShiftJis(text, kConvertedTextCut), "a" + Repeat("\x82\xA0", 498));
}

TEST(CutShiftJis, CutsAConvertedTextAmongTrailBytesAtItsFullLength) {
  const std::string text = Repeat("\x82\xA0", 600);
  EXPECT_EQ(CutShiftJis(text, kConvertedTextCut), Repeat("\x82\xA0", 499) + "\x82");
}

TEST(CutShiftJis, LeavesAPageTextThatFits) {
  const std::string text = Repeat("\x82\xA0", 50);
  ASSERT_EQ(text.size(), 100U);
  EXPECT_EQ(CutShiftJis(text, kPageTextCut), text);
  EXPECT_EQ(CutShiftJis("TEST", kPageTextCut), "TEST");
  EXPECT_EQ(CutShiftJis("", kPageTextCut), "");
}

TEST(CutShiftJis, CutsAPageTextBehindTheHundredthByte) {
  EXPECT_EQ(CutShiftJis(std::string(101, 'x'), kPageTextCut), std::string(100, 'x'));
  EXPECT_EQ(CutShiftJis(Repeat("\x82\xA0", 60), kPageTextCut), Repeat("\x82\xA0", 50));
}

TEST(CutShiftJis, CutsAPageTextBeforeALeadByte) {
  const std::string text = "a" + Repeat("\x82\xA0", 60);
  EXPECT_EQ(CutShiftJis(text, kPageTextCut), "a" + Repeat("\x82\xA0", 49));
}

TEST(CutShiftJis, CutsALeadByteAtTheVeryEnd) {
  EXPECT_EQ(CutShiftJis(std::string(99, 'x') + "\x82", kPageTextCut), std::string(99, 'x'));
}

TEST(CutShiftJis, TellsTrailBytesFromLeadBytesOfTheSameValue) {
  const std::string me = "\x83\x81";  // a katakana whose trail byte could lead
  EXPECT_EQ(CutShiftJis(Repeat(me, 60), kPageTextCut), Repeat(me, 50));
  EXPECT_EQ(CutShiftJis("a" + Repeat(me, 60), kPageTextCut), "a" + Repeat(me, 49));
  EXPECT_EQ(CutShiftJis(Repeat(me, 600), kConvertedTextCut), Repeat(me, 499) + "\x83");
  EXPECT_EQ(CutShiftJis("a" + Repeat(me, 600), kConvertedTextCut), "a" + Repeat(me, 498));
}

TEST(CutShiftJis, TakesHalfWidthKatakanaForOneByte) {
  EXPECT_EQ(CutShiftJis(Repeat("\xB1", 120), kPageTextCut), Repeat("\xB1", 100));
  EXPECT_EQ(CutShiftJis("\xB1" + Repeat("\x82\xA0", 60), kPageTextCut),
            "\xB1" + Repeat("\x82\xA0", 49));
}

TEST(CutShiftJis, TakesLeadBytesBeyondTheStandardForLeadBytes) {
  EXPECT_EQ(CutShiftJis("a" + Repeat("\xFB\x40", 60), kPageTextCut), "a" + Repeat("\xFB\x40", 49));
}

constexpr Conversion kEucJpHeaders[] = {
    {"Empty", ""sv, ""sv},
    {"Ascii", "down"sv, "down"sv},
    {"Kanji", "\xB4\xC1\xBB\xFA"sv, "\x1B$B4A;z\x1B(B"sv},
    {"KanjiAmongAscii",
     "a\xB4\xC1 \xBB\xFA"
     "b"sv,
     "a\x1B$B4A\x1B(B \x1B$B;z\x1B(Bb"sv},
    {"PairCutShort", "\xB4\xC1\xBB"sv, "\x1B$B4A\x1B(B\xBB"sv},
    {"LowestBytesOfAPair", "\x81\x81"sv, "\x1B$B\x01\x01\x1B(B"sv},
    {"ByteBelowAPair", "\x80\xB4\xC1"sv, "\x80\x1B$B4A\x1B(B"sv},
    {"HalfWidthKatakana", "\x8E\xB1"sv, "\x1B$B\x0E\x31\x1B(B"sv},
};

class EucJpToJisTest : public ::testing::TestWithParam<Conversion> {};

INSTANTIATE_TEST_SUITE_P(Texts, EucJpToJisTest, ::testing::ValuesIn(kEucJpHeaders),
                         NameOfConversion);

TEST_P(EucJpToJisTest, Converts) {
  EXPECT_EQ(EucJpToJis(GetParam().from, 1024), GetParam().to);
}

TEST(EucJpToJis, StopsWhenItHasItsCapacity) {
  EXPECT_EQ(EucJpToJis(std::string(20, 'x'), 10), std::string(10, 'x'));
  EXPECT_EQ(EucJpToJis(Repeat("\xB4\xC1", 20), 9), "\x1B$B4A4A4A\x1B(B");
  EXPECT_EQ(EucJpToJis(Repeat("\xB4\xC1", 20), 10), "\x1B$B4A4A4A4A\x1B(B");
}

constexpr Conversion kFromShiftJis[] = {
    {"Empty", ""sv, ""sv},
    {"Ascii", "device down"sv, "device down"sv},
    {"Kanji", "\x8A\xBF\x8E\x9A"sv, "\x1B$B4A;z\x1B(B"sv},
    {"KanjiAmongAscii", "a\x8A\xBF b"sv, "a\x1B$B4A\x1B(B b"sv},
    {"LeavesKanjiBeforeEachLineEnd", "\x8A\xBF\r\n\x8E\x9A\n"sv,
     "\x1B$B4A\x1B(B\r\n\x1B$B;z\x1B(B\n"sv},
    {"FirstCell", "\x81\x40"sv, "\x1B$B!!\x1B(B"sv},
    {"LastCell", "\xEF\xFC"sv, "\x1B$B~~\x1B(B"sv},
    {"TrailsAround7F", "\x81\x7E\x81\x80"sv, "\x1B$B!_!`\x1B(B"sv},
    {"LastOfAnOddRow", "\x81\x9E\x81\x9F"sv, "\x1B$B!~\"!\x1B(B"sv},
    {"LeadBytesAroundTheKatakana", "\x9F\xFC\xE0\x40"sv, "\x1B$B^~_!\x1B(B"sv},
    {"Katakana", "\xB1"sv, "\x1B$B%\"\x1B(B"sv},
    {"KatakanaWithVoicedMark", "\xB6\xDE"sv, "\x1B$B%,\x1B(B"sv},
    {"KatakanaWithSemiVoicedMark", "\xCA\xDF"sv, "\x1B$B%Q\x1B(B"sv},
    {"MarkBehindAKatakanaThatTakesNone", "\xB1\xDE\xB6\xDF"sv, "\x1B$B%\"!+%+!,\x1B(B"sv},
    {"MarkAlone", "\xDE\xDF"sv, "\x1B$B!+!,\x1B(B"sv},
    {"VoicedU", "\xB3\xDE"sv, "\x1B$B%t\x1B(B"sv},
    {"MarkBehindAFullWidthKatakana", "\x83\x4A\xDE"sv, "\x1B$B%+!+\x1B(B"sv},
    {"ForeignTrailOutsideKanji", "\x81 a"sv, "\x81 a"sv},
    {"ForeignTrailInKanji", "\x8A\xBF\x81 \x8E\x9A"sv, "\x1B$B4A\x81 ;z\x1B(B"sv},
    {"ForeignTrailFD", "\x81\xFD"sv, "\x81\xFD"sv},
    {"Trail7F", "\x81\x7F"sv, "\x1B$B!`\x1B(B"sv},
    {"LeadByteAtTheEnd", "\x8A\xBF\x8E"sv, "\x1B$B4A\x1B(B\x8E"sv},
    {"LeadByteBeyondTheStandard", "\x8A\xBF\xFA\x40"sv, "\x1B$B4A\x1B(B\xFA\x40"sv},
    {"FirstLeadByteBeyondTheStandard", "\xF0\x40"sv, "\xF0\x40"sv},
    {"BytesOfNeitherKind", "\x80\xA0\xFD\xFF"sv, "\x80\xA0\xFD\xFF"sv},
    {"EscapeSequence", "\x1B$B4A\x1B(B"sv, "\x1B$B4A\x1B(B"sv},
};

class ShiftJisToJisTest : public ::testing::TestWithParam<Conversion> {};

INSTANTIATE_TEST_SUITE_P(Texts, ShiftJisToJisTest, ::testing::ValuesIn(kFromShiftJis),
                         NameOfConversion);

TEST_P(ShiftJisToJisTest, Converts) {
  EXPECT_EQ(ShiftJisToJis(GetParam().from, 1000), GetParam().to);
}

TEST(ShiftJisToJis, HasAFullWidthFormOfEveryHalfWidthKatakana) {
  std::string katakana;
  for (unsigned byte = 0xA1; byte <= 0xDF; ++byte)
    katakana.push_back(static_cast<char>(static_cast<std::uint8_t>(byte)));
  EXPECT_EQ(ShiftJisToJis(katakana, 1000),
            "\x1B$B"
            "!#!V!W!\"!&%r%!%#%%%'%)%c%e%g%C!<"
            "%\"%$%&%(%*%+%-%/%1%3%5%7%9%;%=%?"
            "%A%D%F%H%J%K%L%M%N%O%R%U%X%[%^%_"
            "%`%a%b%d%f%h%i%j%k%l%m%o%s!+!,"
            "\x1B(B");
}

TEST(ShiftJisToJis, StopsWhenFewerThanFourBytesOfRoomAreLeft) {
  EXPECT_EQ(ShiftJisToJis("abcdefgh", 8), "abcde");
  EXPECT_EQ(ShiftJisToJis("abcdefgh", 11), "abcdefgh");
  EXPECT_EQ(ShiftJisToJis("abcdefgh", 10), "abcdefg");
  EXPECT_EQ(ShiftJisToJis("abcdefgh", 4), "a");
  EXPECT_EQ(ShiftJisToJis("abcdefgh", 3), "");
  EXPECT_EQ(ShiftJisToJis("abcdefgh", 0), "");
}

TEST(ShiftJisToJis, ExceedsItsRoomByEscapeSequences) {
  const std::string text = Repeat("\x8A\xBF", 20);
  EXPECT_EQ(ShiftJisToJis(text, 3), "");
  EXPECT_EQ(ShiftJisToJis(text, 4), "\x1B$B4A\x1B(B");
  EXPECT_EQ(ShiftJisToJis(text, 8), "\x1B$B4A\x1B(B");
  EXPECT_EQ(ShiftJisToJis(text, 9), "\x1B$B4A4A\x1B(B");
  EXPECT_EQ(ShiftJisToJis("\x8A\xBF\n\n", 9), "\x1B$B4A\x1B(B\n");
}

}  // namespace
}  // namespace brantel
