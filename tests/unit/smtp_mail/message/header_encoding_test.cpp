#include "smtp_mail/message/header_encoding.h"

#include <gtest/gtest.h>

#include <cstdint>
#include <string>
#include <string_view>

namespace brantel {
namespace {

using namespace std::string_view_literals;

constexpr int kLimit = 512;

std::string Repeat(std::string_view text, std::size_t times) {
  std::string repeated;
  for (std::size_t i = 0; i < times; ++i) {
    repeated += text;
  }
  return repeated;
}

TEST(HasHighBytes, CountsDelete) {
  EXPECT_FALSE(HasHighBytes(""));
  EXPECT_FALSE(HasHighBytes("plain\x1B$B~\r\n"));
  EXPECT_TRUE(HasHighBytes("a\x7F"));
  EXPECT_TRUE(HasHighBytes("\x80"));
  EXPECT_TRUE(HasHighBytes("caf\xE9"));
  EXPECT_TRUE(HasHighBytes("\xFF"));
}

struct Encoding {
  unsigned code_page;
  std::string_view text;
  std::string_view encoded;
};

constexpr Encoding kEncodings[] = {
    // Where the encoded-word begins and ends.
    {1252, "", ""},
    {1252, "Subject: plain", "Subject: plain"},
    {1252, "Subject: St\xF6rung", "Subject: St =?ISO-8859-1?Q?=F6?=rung"},
    {1252, "Subject: \xC4rger", "Subject:  =?ISO-8859-1?Q?=C4?=rger"},
    {1252, "\xC4", " =?ISO-8859-1?Q?=C4?="},
    {1252, "a \xE9 b \xE8 c", "a  =?ISO-8859-1?Q?=E9_b_=E8?= c"},
    {1252, "caf\xE9 100% (full), \"now\"?", "caf =?ISO-8859-1?Q?=E9?= 100% (full), \"now\"?"},
    {1252,
     "del\x7F"
     "ete",
     "del =?ISO-8859-1?Q?=7F?=ete"},
    {1252,
     "es\x1B"
     "c",
     "es =?ISO-8859-1?Q?=1B?=c"},
    // Every byte between two that need it.
    {1252, "\xE9!#$%&'*+-\\^`{|}~\xE9", " =?ISO-8859-1?Q?=E9!#$%&'*+-\\^`{|}~=E9?="},
    {1252,
     "\xE9"
     "09AZaz \xE9",
     " =?ISO-8859-1?Q?=E9"
     "09AZaz_=E9?="},
    {1252, "\xE9\"(),./:;\xE9", " =?ISO-8859-1?Q?=E9=22=28=29=2C=2E=2F=3A=3B=E9?="},
    {1252, "\xE9<=>?@[]_\xE9", " =?ISO-8859-1?Q?=E9=3C=3D=3E=3F=40=5B=5D=5F=E9?="},
    {1252, "\xE9\t\x01\xE9", " =?ISO-8859-1?Q?=E9=09=01=E9?="},
    {1252, "\xE9\0\xE9"sv, " =?ISO-8859-1?Q?=E9=00=E9?="},
    {1252, "\x80\xFF", " =?ISO-8859-1?Q?=80=FF?="},
    // A line end.
    {1252, "\xE9\r\nplain", " =?ISO-8859-1?Q?=E9?=\r\nplain"},
    {1252, "\xE9 \n\xE9 tail", " =?ISO-8859-1?Q?=E9_?= tail"},
    {1252, "Subject: St\xF6rung\r\n\r\n", "Subject: St =?ISO-8859-1?Q?=F6?=rung\r\n\r\n"},
    {1252, "To: \xC4\r\n", "To:  =?ISO-8859-1?Q?=C4?=\r\n"},
    {437, "To: \xC4\r\n", "To: \xC4\r\n"},
    {1252, "\xE9\x1B\r\n", " =?ISO-8859-1?Q?=E9=1B=0DB?="},
    {1252, "\xE9\x1B(\r\n", " =?ISO-8859-1?Q?=E9=1B=28B?=\n"},
    {1252, "\xE9\x1B(B\r\n", " =?ISO-8859-1?Q?=E9=1B=28B?=\r\n"},
    {932, "\x8F\xE1\x8A\x51\r\n", " =?ISO-2022-JP?Q?=1B$B=3Ec32=1B=28B?=\r\n"},
    {932, "\xBE\xE3 \xF3\xA1\r\n", " =?ISO-2022-JP?Q?=1B$B=3Ec=1B=28B_=1B$Bs!=1B=28B?=\r\n"},
    // Half a character takes the carriage return for its other half.
    {932, "\x8A\xBF\x81\r\n", " =?ISO-2022-JP?Q?=1B$B4A=81?=\r\x1B(B\n"},
    // Line ends that the conversion from EUC-JP makes.
    {932,
     "\xFD\xE1\x8D\x8A"
     "Bcc: eve\r\n",
     " =?ISO-2022-JP?Q?=1B$B}a?=\r\n"},
    {932,
     "\xFD\xE1\x8A\xB0"
     "Bcc: eve\r\n\r\n",
     " =?ISO-2022-JP?Q?=1B$B}a?=\r\n\r\n"},
    {932, "\xFD\xE1\x8D\x8D", " =?ISO-2022-JP?Q?=1B$B}a?="},
    // Escapes.
    {1252, "\xE9\x1B(Bx", " =?ISO-8859-1?Q?=E9=1B=28B?=x"},
    {1252, "\xE9\x1B$Bx\x1B(Jy", " =?ISO-8859-1?Q?=E9=1B$Bx=1B=28B?=y"},
    {1252, "\xE9\x1B(B\xE8 x", " =?ISO-8859-1?Q?=E9=1B=28B?= x"},
    {1252, "\xE9\x1B(", " =?ISO-8859-1?Q?=E9=1B?=("},
    {1252, "\xE9\x1B", " =?ISO-8859-1?Q?=E9=1B?="},
    // The labels.
    {949, "\xB0\xA1", " =?ISO-2022-JP-2?Q?=B0=A1?="},
    {1250, "\xEA", " =?ISO-8859-2?Q?=EA?="},
    {1251, "\xE0", " =?ISO-8859-5?Q?=E0?="},
    {1253, "\xE1", " =?ISO-8859-7?Q?=E1?="},
    {1254, "\xFE", " =?ISO-8859-9?Q?=FE?="},
    {1255, "\xE0", " =?ISO-8859-8?Q?=E0?="},
    {1256, "\xC7", " =?ISO-8859-6?Q?=C7?="},
    {1257, "\xE0", " =?ISO-8859-4?Q?=E0?="},
    {437, "St\x94rung \x1B x", "St\x94rung \x1B x"},
    {65001, "St\xC3\xB6rung", "St\xC3\xB6rung"},
    // Japanese: Shift_JIS, EUC-JP, undecided, JIS, and what is none of them.
    {932, "Subject: \x8F\xE1\x8A\x51 1", "Subject:  =?ISO-2022-JP?Q?=1B$B=3Ec32=1B=28B?= 1"},
    {932, "\xB1\xB2\xB3", " =?ISO-2022-JP?Q?=1B$B%=22%$%&=1B=28B?="},
    {932, "\xBE\xE3\xB3\xB2\xA1\xFE", " =?ISO-2022-JP?Q?=1B$B=3Ec32!~=1B=28B?="},
    {932, "\xBE\xE3 \xF3\xA1", " =?ISO-2022-JP?Q?=1B$B=3Ec=1B=28B_=1B$Bs!=1B=28B?="},
    {932, "\xA4\xA2\xA4\xA4", " =?ISO-2022-JP?Q?=1B$B!=22!V!=22!=22=1B=28B?="},
    {932, "\x1B$B>c32\x1B(B\x80", " =?ISO-2022-JP?Q?=1B$B=3Ec32=1B=28B?="},
    {932, "\x80 x", " =?ISO-2022-JP?Q?=80?= x"},
};

TEST(EncodeHeaderText, EncodesAsItShould) {
  for (const Encoding& encoding : kEncodings) {
    EXPECT_EQ(EncodeHeaderText(encoding.text, encoding.code_page, kLimit), encoding.encoded);
  }
}

constexpr std::string_view kPrefix = " =?ISO-8859-1?Q?";

TEST(EncodeHeaderText, DropsTheEightBitTextBehind55Characters) {
  // 18 times three characters; the next finds no room for its three.
  EXPECT_EQ(EncodeHeaderText(std::string(30, '\xE9') + " plain", 1252, kLimit),
            std::string(kPrefix) + Repeat("=E9", 18) + "?= plain");
  // 54 and a plain one make 55.
  EXPECT_EQ(EncodeHeaderText(std::string(18, '\xE9') + "ab\xE9 plain", 1252, kLimit),
            std::string(kPrefix) + Repeat("=E9", 18) + "a?= plain");
  // From 52 written, three more still go.
  EXPECT_EQ(EncodeHeaderText(std::string(17, '\xE9') + "a\xE9\xE9 plain", 1252, kLimit),
            std::string(kPrefix) + Repeat("=E9", 17) + "a=E9?= plain");
  EXPECT_EQ(EncodeHeaderText(std::string(17, '\xE9') + "ab\xE9\xE9 plain", 1252, kLimit),
            std::string(kPrefix) + Repeat("=E9", 17) + "ab?= plain");
  EXPECT_EQ(EncodeHeaderText("\xE9" + std::string(60, 'a') + "\xE9 plain", 1252, kLimit),
            std::string(kPrefix) + "=E9" + std::string(52, 'a') + "?= plain");
}

TEST(EncodeHeaderText, KeepsAPlainTailOfAnyLength) {
  EXPECT_EQ(EncodeHeaderText("\xE9" + std::string(900, 'a'), 1252, kLimit),
            std::string(kPrefix) + "=E9?=" + std::string(900, 'a'));
}

TEST(EncodeHeaderText, EndsAPlainBeginningAtTheLimit) {
  EXPECT_EQ(EncodeHeaderText(std::string(509, 'a'), 1252, kLimit), std::string(509, 'a'));
  EXPECT_EQ(EncodeHeaderText(std::string(600, 'a'), 1252, kLimit), std::string(510, 'a'));
  EXPECT_EQ(EncodeHeaderText(std::string(510, 'a') + "\xE9", 1252, kLimit), std::string(510, 'a'));
  EXPECT_EQ(EncodeHeaderText(std::string(510, 'a') + "\xE9", 437, kLimit), std::string(510, 'a'));
}

TEST(EncodeHeaderText, DropsTheRestWhereAnEncodedWordHasNoRoom) {
  const auto encode = [](std::size_t plain) {
    return EncodeHeaderText(std::string(plain, 'a') + "\xE9 b", 1252, kLimit);
  };
  const auto word = [](std::size_t plain, std::string_view encoded) {
    return std::string(plain, 'a') + std::string(kPrefix) + std::string(encoded) + "?= b";
  };
  EXPECT_EQ(encode(509), std::string(509, 'a'));
  EXPECT_EQ(encode(492), std::string(492, 'a'));
  // Room for the encoded-word, but at first for none of its three characters.
  EXPECT_EQ(encode(491), word(491, ""));
  EXPECT_EQ(encode(490), word(490, ""));
  EXPECT_EQ(encode(489), word(489, "=E9"));
}

TEST(EncodeHeaderText, DropsALineEndWithTheTextBeforeIt) {
  const auto encode = [](std::size_t plain, unsigned code_page) {
    return EncodeHeaderText(std::string(plain, 'a') + "\xE9\r\n", code_page, kLimit);
  };
  EXPECT_EQ(encode(491, 1252), std::string(491, 'a') + std::string(kPrefix) + "?=\r\n");
  EXPECT_EQ(encode(492, 1252), std::string(492, 'a'));
  EXPECT_EQ(encode(488, 949), std::string(488, 'a') +
                                  " =?ISO-2022-JP-2?Q?"
                                  "?=\r\n");
  EXPECT_EQ(encode(489, 949), std::string(489, 'a'));
  EXPECT_EQ(encode(489, 932), std::string(489, 'a'));
  EXPECT_EQ(encode(509, 437), std::string(509, 'a') + "\xE9\r\n");
  EXPECT_EQ(encode(510, 437), std::string(510, 'a'));
  // A line end is among the bytes that reach the limit.
  EXPECT_EQ(EncodeHeaderText(std::string(508, 'a') + "\r\n", 1252, kLimit),
            std::string(508, 'a') + "\r\n");
  EXPECT_EQ(EncodeHeaderText(std::string(509, 'a') + "\r\n", 1252, kLimit),
            std::string(509, 'a') + "\r");
}

TEST(EncodeHeaderText, DropsALineEndWithJapaneseTextThatFindsNoRoom) {
  // 470 and the reserve leave 21: nine bytes open, hold and close two kanji.
  const std::string plain = std::string(470, 'a') + "\x8A\xBF\x8A\xBF";
  const std::string encoded = std::string(470, 'a') + " =?ISO-2022-JP?Q?=1B$B4A4A=1B=28B?=";
  EXPECT_EQ(EncodeHeaderText(plain + "\r\n\r\n", 932, kLimit), encoded + "\r\n\r\n");
  EXPECT_EQ(EncodeHeaderText(plain + "bbbb\r\n\r\n", 932, kLimit), encoded + "bbbb\r\n\r\n");
  EXPECT_EQ(EncodeHeaderText(plain + "bbbbb\r\n\r\n", 932, kLimit), encoded + "bbbbb\r\n\r");
  EXPECT_EQ(EncodeHeaderText(plain + "bbbbbbbb\r\n\r\n", 932, kLimit), encoded + "bbbbbbbb");
}

TEST(EncodeHeaderText, CutsTheEncodedWordToTheRoomThatIsLeft) {
  const std::string plain(480, 'a');
  // 480 and the reserve leave 14: twelve characters at most, hexadecimal ones while at most nine
  // are written.
  EXPECT_EQ(EncodeHeaderText(plain + std::string(9, '\xE9'), 1252, kLimit),
            plain + std::string(kPrefix) + Repeat("=E9", 4) + "?=");
  EXPECT_EQ(EncodeHeaderText(plain + "\xE9" + std::string(20, 'b') + "\xE9", 1252, kLimit),
            plain + std::string(kPrefix) + "=E9" + std::string(9, 'b') + "?=");
}

TEST(EncodeHeaderText, KeepsALimitOfOnesOwn) {
  EXPECT_EQ(EncodeHeaderText("abcdefgh\xE9", 1252, 10), "abcdefgh");
  EXPECT_EQ(EncodeHeaderText("abc\xE9", 1252, 10), "abc");
}

TEST(EncodeHeaderText, AppendsJapaneseBehindTheEncodedWordAsItIs) {
  // 20 kanji are more than an encoded-word holds: the rest has no byte that would have it dropped.
  const std::string encoded = EncodeHeaderText(Repeat("\x8A\xBF", 20), 932, kLimit);
  EXPECT_EQ(encoded, " =?ISO-2022-JP?Q?=1B$B" + Repeat("4A", 20) + "=1B=28B?=");
  const std::string longer = EncodeHeaderText(Repeat("\x8A\xBF", 40), 932, kLimit);
  EXPECT_EQ(longer,
            " =?ISO-2022-JP?Q?=1B$B" + Repeat("4A", 25) + "?=" + Repeat("4A", 15) + "\x1B(B");
}

TEST(EncodeHeaderText, WritesTheClosingEscapeWholeBehind55Characters) {
  // Five characters open kanji, 24 kanji are 48, and at 53 the closing sequence begins.
  EXPECT_EQ(EncodeHeaderText(Repeat("\x8A\xBF", 24), 932, kLimit),
            " =?ISO-2022-JP?Q?=1B$B" + Repeat("4A", 24) + "=1B=28B?=");
}

TEST(EncodeHeaderText, GivesTheJapaneseConversionTheRoomThatIsLeft) {
  const std::string plain(470, 'a');
  // 470 and the reserve leave 21. Eight kanji are converted, since four bytes are left before each
  // of them, and seven fill the encoded-word.
  EXPECT_EQ(EncodeHeaderText(plain + Repeat("\x8A\xBF", 20), 932, kLimit),
            plain + " =?ISO-2022-JP?Q?=1B$B" + Repeat("4A", 7) + "?=4A\x1B(B");
}

TEST(EncodeHeaderText, KeepsLongEucJpWithinItsWorkBuffer) {
  const std::string encoded = EncodeHeaderText(Repeat("\xBE\xF3", 2000), 932, kLimit);
  // 1023 bytes, as the last pair begins in the buffer, of which the encoded-word takes the opening
  // sequence and 12 kanji of four characters with the first byte of the next.
  EXPECT_EQ(encoded, " =?ISO-2022-JP?Q?=1B$B" + Repeat("=3Es", 12) +
                         "?=" + Repeat(">s", (1025 - 3) / 2 - 12) + "\x1B(B");
}

TEST(EncodeHeaderText, FillsItsWorkBufferOfEucJpToTheByte) {
  const std::string encoded = EncodeHeaderText(
      "\xBE\xF3"
      "a" +
          Repeat("\xBE\xF3", 2000),
      932, kLimit);
  // 12 bytes as far as the second opening sequence, and 506 kanji make 1024.
  EXPECT_EQ(encoded, " =?ISO-2022-JP?Q?=1B$B=3Es=1B=28Ba=1B$B" + Repeat("=3Es", 8) +
                         "?=" + Repeat(">s", 506 - 8) + "\x1B(B");
}

TEST(QEncode, TellsHowFarItCame) {
  std::string destination = "x";
  EXPECT_EQ(QEncode("\xE9 plain", destination, 512), 1U);
  EXPECT_EQ(destination, "x=E9");

  destination.clear();
  EXPECT_EQ(QEncode("plain", destination, 512), 0U);
  EXPECT_EQ(destination, "");

  EXPECT_EQ(QEncode(std::string(30, '\xE9'), destination, 512), 18U);
  destination.clear();
  EXPECT_EQ(QEncode("a\r\n\xE9", destination, 512), 1U);
  EXPECT_EQ(destination, "a");
}

TEST(QEncode, WritesNothingWithoutRoom) {
  for (const int room : {-5, 0, 1, 2}) {
    std::string destination;
    EXPECT_EQ(QEncode("a\xE9", destination, room), 0U) << room;
    EXPECT_EQ(destination, "") << room;
  }
  std::string destination;
  EXPECT_EQ(QEncode("ab\xE9", destination, 3), 1U);
  EXPECT_EQ(destination, "a");
}

TEST(QEncode, EncodesEveryByteOrLeavesIt) {
  constexpr std::string_view kLiteral =
      "!#$%&'*+-0123456789ABCDEFGHIJKLMNOPQRSTUVWXYZ\\^`abcdefghijklmnopqrstuvwxyz{|}~";
  for (unsigned byte = 1; byte < 256; ++byte) {
    const char c = static_cast<char>(static_cast<std::uint8_t>(byte));
    if (c == '\r' || c == '\n') continue;
    std::string destination;
    QEncode(std::string(1, c) + "\xE9", destination, 512);
    if (c == ' ') {
      EXPECT_EQ(destination, "_=E9");
    } else if (kLiteral.find(c) != std::string_view::npos) {
      EXPECT_EQ(destination, std::string(1, c) + "=E9");
    } else {
      constexpr std::string_view kDigits = "0123456789ABCDEF";
      EXPECT_EQ(destination, std::string("=") + kDigits[byte / 16] + kDigits[byte % 16] + "=E9");
    }
  }
}

}  // namespace
}  // namespace brantel
