#include "framework/double_byte_text.h"

#include <gtest/gtest.h>

#include <string>

namespace brantel {
namespace {

// The lead bytes of code page 932.
bool IsLeadByte(char c) {
  const auto byte = static_cast<unsigned char>(c);
  return (byte >= 0x81 && byte <= 0x9F) || (byte >= 0xE0 && byte <= 0xFC);
}

bool NoLeadByte(char) {
  return false;
}

TEST(WithoutTornCharacter, LeavesTextOfWholeCharactersAsItIs) {
  for (const std::string text : {"", "a", "abc", "\xB1", "\x83\x5C", "a\x83\x5C",
                                 "\x83\x5C\x83\x5C", "\x83\x83", "\x81\x81zz"}) {
    EXPECT_EQ(WithoutTornCharacter(text, IsLeadByte), text);
  }
}

TEST(WithoutTornCharacter, DropsALeadByteAtTheEnd) {
  EXPECT_EQ(WithoutTornCharacter("\x83", IsLeadByte), "");
  EXPECT_EQ(WithoutTornCharacter("abc\x83", IsLeadByte), "abc");
  EXPECT_EQ(WithoutTornCharacter("\x83\x5C\x83", IsLeadByte), "\x83\x5C");
  EXPECT_EQ(WithoutTornCharacter("\x83\x83\x83", IsLeadByte), "\x83\x83");
}

TEST(WithoutTornCharacter, KeepsEveryByteWhereNoneLeads) {
  EXPECT_EQ(WithoutTornCharacter("abc\x83", NoLeadByte), "abc\x83");
}

}  // namespace
}  // namespace brantel
