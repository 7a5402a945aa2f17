#include "text/double_byte_text.h"

#include <gtest/gtest.h>

#include <string>

#include "tests/unit/text/few_code_pages.h"

namespace brantel {
namespace {

TEST(WithoutTornCharacter, LeavesTextOfWholeCharactersAsItIs) {
  for (const std::string text : {"", "a", "abc", "\xB1", "\x83\x5C", "a\x83\x5C",
                                 "\x83\x5C\x83\x5C", "\x83\x83", "\x81\x81zz"}) {
    EXPECT_EQ(WithoutTornCharacter(text, kCodePage932), text);
  }
}

TEST(WithoutTornCharacter, DropsALeadByteAtTheEnd) {
  EXPECT_EQ(WithoutTornCharacter("\x83", kCodePage932), "");
  EXPECT_EQ(WithoutTornCharacter("abc\x83", kCodePage932), "abc");
  EXPECT_EQ(WithoutTornCharacter("\x83\x5C\x83", kCodePage932), "\x83\x5C");
  EXPECT_EQ(WithoutTornCharacter("\x83\x83\x83", kCodePage932), "\x83\x83");
}

TEST(WithoutTornCharacter, KeepsEveryByteWhereNoneLeads) {
  EXPECT_EQ(WithoutTornCharacter("abc\x83", kCodePage1252), "abc\x83");
}

}  // namespace
}  // namespace brantel
