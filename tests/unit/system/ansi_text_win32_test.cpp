#include "system/windows/ansi_text_win32.h"

#include <gtest/gtest.h>

#include <cctype>
#include <string>

namespace brantel {
namespace {

bool IsLetterOrDigit(char c) {
  return std::isalnum(static_cast<unsigned char>(c)) != 0;
}

TEST(AnsiTextTest, KeepsWhatTheCodePageHolds) {
  std::wstring ascii;
  for (wchar_t c = 0; c < 0x80; ++c)
    ascii += c;
  const std::string narrow = ToAnsi(ascii);
  EXPECT_EQ(narrow, std::string(ascii.begin(), ascii.end()));
  EXPECT_EQ(FromAnsi(narrow), ascii);
}

// Whoever filters or quotes a text does so before it is converted.
TEST(AnsiTextTest, MakesNoSignOfWhatIsNone) {
  int likenesses = 0;
  for (unsigned c = 0x80; c <= 0xFFFF; ++c) {
    const std::wstring character(1, static_cast<wchar_t>(c));
    const std::string narrow = ToAnsi(character);
    if (narrow == "?" || FromAnsi(narrow) == character) continue;
    ++likenesses;
    for (const char byte : narrow)
      EXPECT_TRUE(static_cast<unsigned char>(byte) >= 0x80 || IsLetterOrDigit(byte))
          << std::hex << c << " becomes " << narrow;
  }
  EXPECT_GT(likenesses, 0);
}

TEST(AnsiTextTest, ConvertsEachCharacterOfATextAsIfItWereAlone) {
  // In full width: a letter, a digit, a quotation mark, a semicolon and a full stop.
  const std::wstring text = L"a\"\uFF21\uFF11\uFF02\uFF1B\uFF0E;";
  std::string expected;
  for (const wchar_t c : text)
    expected += ToAnsi(std::wstring(1, c));
  EXPECT_EQ(ToAnsi(text), expected);
}

TEST(AnsiTextTest, ChangesNoCharacterOfAPath) {
  for (unsigned c = 1; c <= 0xFFFF; ++c) {
    const std::wstring character(1, static_cast<wchar_t>(c));
    const std::string narrow = ToAnsiPath(character);
    EXPECT_TRUE(narrow == "?" || FromAnsi(narrow) == character) << std::hex << c;
  }
}

TEST(AnsiTextTest, EndsAPathAtItsFirstNul) {
  EXPECT_EQ(ToAnsiPath(std::wstring(L"C:\\a\0b", 6)), "C:\\a");
}

}  // namespace
}  // namespace brantel
