#include "text/japanese_code.h"

#include <gtest/gtest.h>

#include <string>
#include <string_view>

namespace brantel {
namespace {

using namespace std::string_view_literals;

struct Classification {
  std::string_view name;
  std::string_view text;
  JapaneseCode code;
};

constexpr Classification kClassifications[] = {
    {"Empty", ""sv, JapaneseCode::kNone},
    {"Ascii", "router7 is down"sv, JapaneseCode::kNone},
    {"AsciiOfEveryPrintableKind", R"( !"#$%&'()*+,-./09:;<=>?@AZ[\]^_`az{|}~)"sv,
     JapaneseCode::kNone},
    {"ControlCharacters", "\x01\t\r\n\x7F"sv, JapaneseCode::kNone},
    {"Nul", "a\0b"sv, JapaneseCode::kNone},
    {"KanjiPairsWithoutTheirEscape", "$B4A;z"sv, JapaneseCode::kNone},

    // The 7-bit forms.
    {"JisNew", "\x1B$B4A;z\x1B(B"sv, JapaneseCode::kJisNew},
    {"JisNewBehindAscii", "down: \x1B$B4A;z\x1B(B"sv, JapaneseCode::kJisNew},
    {"JisNewUnclosed", "\x1B$B4A"sv, JapaneseCode::kJisNew},
    {"JisNewOpeningAlone", "\x1B$B"sv, JapaneseCode::kJisNew},
    {"JisOld", "\x1B$@4A;z\x1B(J"sv, JapaneseCode::kJisOld},
    {"JisSupplement", "\x1B$(D0!\x1B(B"sv, JapaneseCode::kJisOld},
    {"JisWithOpeningCutShort", "abc\x1B$"sv, JapaneseCode::kJisOld},
    {"JisEscK", "\x1BK4A;z\x1BH"sv, JapaneseCode::kJisEscK},
    {"JisEscKBehindAscii", "down \x1BK4A"sv, JapaneseCode::kJisEscK},
    {"ClosingEscapeAlone", "abc\x1B(Bdef"sv, JapaneseCode::kNone},
    {"OtherEscapeBeforeJisNew", "\x1B(J\x1B$B4A"sv, JapaneseCode::kJisNew},
    {"EscapeEscape", "\x1B\x1B$B4A"sv, JapaneseCode::kNone},
    {"EscapeAtTheEnd", "abc\x1B"sv, JapaneseCode::kNone},
    {"LowerCaseK", "\x1Bk4A"sv, JapaneseCode::kNone},
    {"FirstOfTwoJisForms", "\x1B$@4A\x1B$B;z"sv, JapaneseCode::kJisOld},

    // Bytes of Shift_JIS alone.
    {"ShiftJisHiragana", "\x82\xA0\x82\xA2"sv, JapaneseCode::kShiftJis},
    {"ShiftJisKatakana", "\x83\x41\x83\x43"sv, JapaneseCode::kShiftJis},
    {"ShiftJisKanji", "\x8A\xBF\x8E\x9A"sv, JapaneseCode::kShiftJis},
    {"ShiftJisBehindAscii", "down \x93\xFA"sv, JapaneseCode::kShiftJis},
    {"ShiftJisFirstLeadByte", "\x81"sv, JapaneseCode::kShiftJis},
    {"ShiftJisLastLeadByteOfTheFirstRun", "\x8D"sv, JapaneseCode::kShiftJis},
    {"ShiftJisFirstLeadByteOfTheSecondRun", "\x8F"sv, JapaneseCode::kShiftJis},
    {"ShiftJisLastLeadByteOfTheSecondRun", "\x9F"sv, JapaneseCode::kShiftJis},
    {"ByteBelowTheLeadBytes", "\x80"sv, JapaneseCode::kNone},
    {"ByteBetweenLeadBytesAndKatakana", "\xA0"sv, JapaneseCode::kNone},
    {"ByteBehindAllOthers", "\xFF"sv, JapaneseCode::kNone},

    // 0x8E: a lead byte of Shift_JIS, the katakana shift of EUC-JP.
    {"Shift8EWithFirstLowTrail", "\x8E\x40"sv, JapaneseCode::kShiftJis},
    {"Shift8EWithLastLowTrail", "\x8E\x7E"sv, JapaneseCode::kShiftJis},
    {"Shift8EWithDelete", "\x8E\x7F"sv, JapaneseCode::kNone},
    {"Shift8EWithMiddleTrail", "\x8E\x80"sv, JapaneseCode::kShiftJis},
    {"Shift8EWithLastMiddleTrail", "\x8E\xA0"sv, JapaneseCode::kShiftJis},
    {"Shift8EWithKatakana", "\x8E\xB1"sv, JapaneseCode::kEucJpOrShiftJis},
    {"Shift8EWithFirstKatakana", "\x8E\xA1"sv, JapaneseCode::kEucJpOrShiftJis},
    {"Shift8EWithLastKatakana", "\x8E\xDF"sv, JapaneseCode::kEucJpOrShiftJis},
    {"Shift8EWithHighTrail", "\x8E\xE0"sv, JapaneseCode::kShiftJis},
    {"Shift8EWithLastHighTrail", "\x8E\xFC"sv, JapaneseCode::kShiftJis},
    {"Shift8EWithNoTrail", "\x8E\xFD"sv, JapaneseCode::kNone},
    {"Shift8EWithDigit",
     "\x8E"
     "5"sv,
     JapaneseCode::kNone},
    {"Shift8EAtTheEnd", "abc\x8E"sv, JapaneseCode::kNone},
    {"KatakanaOfEucJpThenItsKanji", "\x8E\xB1\xF4\xA6"sv, JapaneseCode::kEucJp},

    // A katakana of Shift_JIS, or the first byte of a pair of EUC-JP.
    {"EucJpHiragana", "\xA4\xA2\xA4\xA4"sv, JapaneseCode::kEucJpOrShiftJis},
    {"EucJpKanjiThatDecides", "\xB4\xC1\xBB\xFA"sv, JapaneseCode::kEucJp},
    {"EucJpFirstDecidingSecondByte", "\xA4\xF0"sv, JapaneseCode::kEucJp},
    {"EucJpLastDecidingSecondByte", "\xA4\xFE"sv, JapaneseCode::kEucJp},
    {"EucJpLateInTheText", "\xA4\xA2 abc \xA4\xF3"sv, JapaneseCode::kEucJp},
    {"TwoKatakana", "\xB1\xB2"sv, JapaneseCode::kEucJpOrShiftJis},
    {"KatakanaThenLeadByte", "\xB1\x82\xA0"sv, JapaneseCode::kShiftJis},
    {"KatakanaThenAscii",
     "\xB1"
     "abc"sv,
     JapaneseCode::kShiftJis},
    {"KatakanaThenLineEnd", "\xB1\r\n"sv, JapaneseCode::kShiftJis},
    {"KatakanaAtTheEnd", "\xB1"sv, JapaneseCode::kShiftJis},
    {"ThreeKatakana", "\xB1\xB2\xB3"sv, JapaneseCode::kShiftJis},
    {"KatakanaThenA0", "\xB1\xA0"sv, JapaneseCode::kNone},
    {"KatakanaThenFF", "\xB1\xFF"sv, JapaneseCode::kNone},
    {"FirstKatakanaThenKatakana", "\xA1\xB2"sv, JapaneseCode::kEucJpOrShiftJis},
    {"LastKatakanaThenKatakana", "\xDF\xB2"sv, JapaneseCode::kEucJpOrShiftJis},
    {"KatakanaThenTheFirst", "\xB1\xA1"sv, JapaneseCode::kEucJpOrShiftJis},
    {"KatakanaThenTheLast", "\xB1\xDF"sv, JapaneseCode::kEucJpOrShiftJis},
    {"KatakanaThenLastMiddleTrail", "\xB1\x9F"sv, JapaneseCode::kShiftJis},

    // A katakana and a high byte: pairs cannot be told by their place any more.
    {"RunThatStaysUndecided", "\xB4\xE0"sv, JapaneseCode::kEucJpOrShiftJis},
    {"RunThatEndsInBlank", "\xB4\xE0 "sv, JapaneseCode::kEucJpOrShiftJis},
    {"RunWithShiftJisLeadByte", "\xB4\xE0\xA1\x88"sv, JapaneseCode::kShiftJis},
    {"RunWithEucJpByte", "\xB4\xE0\xA1\xFD"sv, JapaneseCode::kEucJp},
    {"RunThroughAscii", "\xB4\xE0@AZ~\x82"sv, JapaneseCode::kShiftJis},
    {"RunDoesNotDecideOn8E", "\xB4\xE0\x8E\xB1"sv, JapaneseCode::kEucJpOrShiftJis},
    {"RunDoesNotDecideOnF0", "\xB4\xE0\xF0\xFC"sv, JapaneseCode::kEucJpOrShiftJis},
    {"RunWithLastEucJpByte", "\xB4\xE0\xA1\xFE"sv, JapaneseCode::kEucJp},
    {"RunFromTheLastHighLead", "\xB4\xEF\xF0"sv, JapaneseCode::kEucJpOrShiftJis},
    {"RunThroughTheLowestTrail", "\xB4\xE0@\xF0"sv, JapaneseCode::kEucJpOrShiftJis},
    {"RunEndedBelowTheLowestTrail", "\xB4\xE0?\xF0"sv, JapaneseCode::kEucJp},
    {"RunEndedThenEucJp", "\xB4\xE0 \xA4\xF3"sv, JapaneseCode::kEucJp},
    {"RunEndedThenShiftJis", "\xB4\xE0 \x82\xA0"sv, JapaneseCode::kShiftJis},

    // The high bytes.
    {"HighEucJpLead", "\xF4\xA6"sv, JapaneseCode::kEucJp},
    {"FirstHighEucJpLead", "\xF0"sv, JapaneseCode::kEucJp},
    {"LastHighEucJpLead", "\xFE"sv, JapaneseCode::kEucJp},
    {"HighShiftJisLeadWithLowTrail", "\xE0\x40"sv, JapaneseCode::kShiftJis},
    {"HighShiftJisLeadWithLastLowTrail", "\xEF\x7E"sv, JapaneseCode::kShiftJis},
    {"HighShiftJisLeadWithMiddleTrail", "\xE0\x80"sv, JapaneseCode::kShiftJis},
    {"HighShiftJisLeadWithLastMiddleTrail", "\xE0\xA0"sv, JapaneseCode::kShiftJis},
    {"HighLeadOfBoth", "\xE0\xA1"sv, JapaneseCode::kEucJpOrShiftJis},
    {"HighLeadOfBothWithLastTrail", "\xEF\xFC"sv, JapaneseCode::kEucJpOrShiftJis},
    {"HighLeadWithTrailOfEucJp", "\xE0\xFD"sv, JapaneseCode::kEucJp},
    {"HighLeadWithLastTrailOfEucJp", "\xE0\xFE"sv, JapaneseCode::kEucJp},
    {"HighLeadWithDigit",
     "\xE0"
     "5"sv,
     JapaneseCode::kNone},
    {"HighLeadAtTheEnd", "\xE0"sv, JapaneseCode::kNone},
    {"UndecidedThenJis", "\xA4\xA2\x1B$B4A"sv, JapaneseCode::kJisNew},
    {"Latin1", "caf\xE9 5"sv, JapaneseCode::kNone},
};

class DetectJapaneseCodeTest : public ::testing::TestWithParam<Classification> {};

INSTANTIATE_TEST_SUITE_P(Texts, DetectJapaneseCodeTest, ::testing::ValuesIn(kClassifications),
                         [](const auto& text) { return std::string(text.param.name); });

TEST_P(DetectJapaneseCodeTest, TellsTheEncoding) {
  EXPECT_EQ(DetectJapaneseCode(GetParam().text), GetParam().code);
}

}  // namespace
}  // namespace brantel
