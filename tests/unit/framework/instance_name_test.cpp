#include "framework/instance_name.h"

#include <gtest/gtest.h>

#include <string>

namespace brantel {
namespace {

bool NoLeadBytes(char) {
  return false;
}

bool ShiftJisLeadBytes(char byte) {
  const auto value = static_cast<unsigned char>(byte);
  return (value >= 0x81 && value <= 0x9F) || (value >= 0xE0 && value <= 0xFC);
}

bool Valid(std::string_view name) {
  return IsValidInstanceName(name, NoLeadBytes);
}

TEST(IsValidInstanceName, TakesOrdinaryNames) {
  for (const char* name : {"Default", "a", "night shift", ".hidden", "v1.2", "caf\xE9", "100%",
                           "a&b=c", "COM", "COM10", "COM0", "CONSOLE", "nuller", "(local)"}) {
    EXPECT_TRUE(Valid(name)) << name;
  }
}

TEST(IsValidInstanceName, RefusesWhatCannotBeAFileOfTheDirectory) {
  for (const char* name :
       {"",    ".",       "..",       "...", "a\\b", "..\\a", "a/b",      "c:",     "a*",     "a?",
        "a\"", "<a",      "a>",       "a|b", "a.",   "a ",    " ",        "a\tb",   "a\nb",   "CON",
        "con", "Nul.txt", "aux .txt", "prn", "COM1", "com9",  "lpt5.log", "CONIN$", "conout$"}) {
    EXPECT_FALSE(Valid(name)) << name;
  }
  EXPECT_FALSE(Valid(std::string_view("a\0b", 3)));
}

TEST(IsValidInstanceName, KnowsThatTheSecondByteOfACharacterIsNoBackslash) {
  EXPECT_TRUE(IsValidInstanceName("\x95\x5C", ShiftJisLeadBytes));
  EXPECT_TRUE(IsValidInstanceName("\x83\x7C", ShiftJisLeadBytes));
  EXPECT_FALSE(IsValidInstanceName("\x95\x5C\\", ShiftJisLeadBytes));
  EXPECT_FALSE(Valid("\x95\x5C"));
}

TEST(IsValidInstanceName, TakesAsManyCharactersAsAFileNameMayHave) {
  EXPECT_TRUE(Valid(std::string(255, 'x')));
  EXPECT_FALSE(Valid(std::string(256, 'x')));
  std::string japanese;
  for (int i = 0; i < 255; ++i)
    japanese += "\x95\x5C";
  EXPECT_TRUE(IsValidInstanceName(japanese, ShiftJisLeadBytes));
  EXPECT_FALSE(IsValidInstanceName(japanese + "x", ShiftJisLeadBytes));
}

}  // namespace
}  // namespace brantel
