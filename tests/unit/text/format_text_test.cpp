#include "text/format_text.h"

#include <gtest/gtest.h>

#include <string>

namespace brantel {
namespace {

using namespace std::string_literals;

struct Case {
  std::string_view format;
  std::string_view expected;
};

void PrintTo(const Case& test_case, std::ostream* stream) {
  *stream << ::testing::PrintToString(std::string(test_case.format));
}

// What messages hold that operators and hosts have written without a thought of formats, or with a
// bad one.
class FormatTextWithoutArguments : public ::testing::TestWithParam<Case> {};

TEST_P(FormatTextWithoutArguments, IsHarmless) {
  EXPECT_EQ(FormatText(GetParam().format), GetParam().expected);
}

INSTANTIATE_TEST_SUITE_P(
    HostileTexts, FormatTextWithoutArguments,
    ::testing::Values(
        Case{"", ""}, Case{"no directive", "no directive"}, Case{"%", "%"}, Case{"%%", "%"},
        Case{"%%%", "%%"}, Case{"%%%%", "%%"}, Case{"100%", "100%"}, Case{"90% full", "90% full"},
        Case{"50%%", "50%"}, Case{"%%s", "%s"}, Case{"%s", ""}, Case{"<%s%s%s%s%s%s%s%s>", "<>"},
        Case{"<%S>", "<>"}, Case{"<%c%C>", "<>"}, Case{"%d", "0"}, Case{"%i", "0"}, Case{"%u", "0"},
        Case{"%x%X", "00"}, Case{"%p", "0"}, Case{"%#x", "0x0"}, Case{"<%n>", "<>"},
        Case{"<%n%n%n%n%hn%hhn%ln%lln%I64n%5n%-5n%05.5n>", "<>"}, Case{"%5d|", "    0|"},
        Case{"%-5d|", "0    |"}, Case{"%05d|", "00000|"}, Case{"%.3d|", "000|"},
        Case{"%5s|", "     |"}, Case{"%-5s|", "     |"}, Case{"%.5s|", "|"}, Case{"%.s|", "|"},
        Case{"%lu", "0"}, Case{"%lld", "0"}, Case{"%hhd", "0"}, Case{"%I64d", "0"},
        Case{"%I32u", "0"}, Case{"%Id", "0"}, Case{"%wd%ws%hs%ls", "0"}, Case{"%*d", "%*d"},
        Case{"%.*s", "%.*s"}, Case{"%*.*n", "%*.*n"}, Case{"%1$s", "%1$s"}, Case{"%1$n", "%1$n"},
        Case{"%f", "%f"}, Case{"%e%E%g%G%a%A", "%e%E%g%G%a%A"}, Case{"%Lf", "%Lf"},
        Case{"%o", "%o"}, Case{"%q%y%k", "%q%y%k"}, Case{"% d", "% d"}, Case{"%+d", "%+d"},
        Case{"%5", "%5"}, Case{"%-", "%-"}, Case{"%.", "%."}, Case{"%5.3", "%5.3"},
        Case{"%l", "%l"}, Case{"%I64", "%I64"}, Case{"%5%d", "%50"}, Case{"%-%s|", "%-|"},
        Case{"%\xE4", "%\xE4"}, Case{"%1!s!", "%1!s!"}));

TEST(FormatText, KeepsANulAsAnyOtherByte) {
  EXPECT_EQ(FormatText("a\0%d"s), "a\0000"s);
  EXPECT_EQ(FormatText("%\0"s), "%\0"s);
}

TEST(FormatText, InsertsArgumentsInTheirOrder) {
  EXPECT_EQ(FormatText("ATDT%s,,,,%s#", {"5551234", "2"}), "ATDT5551234,,,,2#");
  EXPECT_EQ(FormatText("%s%s%s|", {"a", "b"}), "ab|");
  EXPECT_EQ(FormatText("%s|", {"a", "b"}), "a|");
  EXPECT_EQ(FormatText("%%%s%%", {"a"}), "%a%");
  EXPECT_EQ(FormatText("%n%s%n%s", {"a", "b"}), "ab");
  EXPECT_EQ(FormatText("%*d%s", {"a"}), "%*da");
}

TEST(FormatText, DoesNotReadDirectivesInArguments) {
  EXPECT_EQ(FormatText("%s,%s", {"%s%n%%", "%d"}), "%s%n%%,%d");
}

TEST(FormatText, AlignsAndCutsTexts) {
  EXPECT_EQ(FormatText("<%5s>", {"ab"}), "<   ab>");
  EXPECT_EQ(FormatText("<%-5s>", {"ab"}), "<ab   >");
  EXPECT_EQ(FormatText("<%05s>", {"ab"}), "<   ab>");
  EXPECT_EQ(FormatText("<%.1s>", {"ab"}), "<a>");
  EXPECT_EQ(FormatText("<%4.1s>", {"ab"}), "<   a>");
  EXPECT_EQ(FormatText("<%.0s>", {"ab"}), "<>");
  EXPECT_EQ(FormatText("<%1s>", {"ab"}), "<ab>");
  EXPECT_EQ(FormatText("<%c%3C>", {"ab", "cd"}), "<a  c>");
}

TEST(FormatText, FormatsNumbers) {
  EXPECT_EQ(FormatText("%d %i", {4294967295U, 2147483648U}), "-1 -2147483648");
  EXPECT_EQ(FormatText("%u %lu %I64u", {4294967295U, 5U, 6U}), "4294967295 5 6");
  EXPECT_EQ(FormatText("%x %X %#x %#X", {48879U, 48879U, 48879U, 48879U}),
            "beef BEEF 0xbeef 0XBEEF");
  EXPECT_EQ(FormatText("%02u|%05d|%5d|%-5d|", {7U, 4294967295U, 42U, 42U}),
            "07|-0001|   42|42   |");
  EXPECT_EQ(FormatText("%.4u|%8.4x|%08.4x|%-08u|%#06x|", {7U, 10U, 10U, 7U, 10U}),
            "0007|    000a|    000a|7       |0x000a|");
  EXPECT_EQ(FormatText("%cPG1%c", {27U, 0U}), "\x1BPG1");
}

TEST(FormatText, InsertsArgumentsOfTheOtherKindAsTheyAre) {
  EXPECT_EQ(FormatText("ATDT%d,%u,%x", {"5551234", "2", "%n"}), "ATDT5551234,2,%n");
  EXPECT_EQ(FormatText("%s|%.2s|%4s", {4294967295U, 123U, 1U}), "4294967295|12|   1");
}

TEST(FormatText, CutsWhatABufferOf1024BytesDoesNotHold) {
  const std::string longest(1023, 'x');
  EXPECT_EQ(FormatText(longest), longest);
  EXPECT_EQ(FormatText(longest + "y"), longest);
  EXPECT_EQ(FormatText(longest + "%s", {"y"}), longest);
  EXPECT_EQ(FormatText("%s", {longest + "y"}), longest);
  EXPECT_EQ(FormatText("%s%s", {longest, "y"}), longest);
  EXPECT_EQ(FormatText(std::string(1022, 'x') + "%%%%"), std::string(1022, 'x') + "%");
}

TEST(FormatText, BoundsWidthAndPrecision) {
  const std::string blanks(1023, ' ');
  const std::string zeros(1023, '0');
  EXPECT_EQ(FormatText("%2147483647s", {"a"}), blanks);
  EXPECT_EQ(FormatText("%99999999999999999999999999d"), blanks);
  EXPECT_EQ(FormatText("%0999999999d"), zeros);
  EXPECT_EQ(FormatText("%.4294967296d"), zeros);
  EXPECT_EQ(FormatText("%.99999999999999999999s|", {"a"}), "a|");
  EXPECT_EQ(FormatText("%-1023s|", {"a"}), "a" + std::string(1022, ' '));
  EXPECT_EQ(FormatText("%1000000n|"), "|");
}

}  // namespace
}  // namespace brantel
