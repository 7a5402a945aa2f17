#include "instance/instance_name.h"

#include <gtest/gtest.h>

#include <string>

namespace brantel {
namespace {

TEST(IsValidInstanceName, TakesOrdinaryNames) {
  for (const std::u16string name : {u"Default",
                                    u"a",
                                    u"night shift",
                                    u".hidden",
                                    u"v1.2",
                                    u"caf\u00E9",
                                    u"100%",
                                    u"a&b=c",
                                    u"COM",
                                    u"COM10",
                                    u"COM0",
                                    u"CONSOLE",
                                    u"nuller",
                                    u"(local)",
                                    u"CLOCK",
                                    u"CLOCK$1",
                                    u"x\u00B2",
                                    u"COM\u2074",
                                    u"COM\u00B9\u00B9",
                                    u"\u00B9COM",
                                    u"\u8868",
                                    u"\uFF0F"}) {
    EXPECT_TRUE(IsValidInstanceName(name)) << ::testing::PrintToString(name);
  }
}

TEST(IsValidInstanceName, RefusesWhatCannotBeAFileOfTheDirectory) {
  for (const std::u16string name : {u"",   u".",  u"..", u"...",  u"a\\b", u"..\\a",    u"a/b",
                                    u"c:", u"a*", u"a?", u"a\"",  u"<a",   u"a>",       u"a|b",
                                    u"a.", u"a ", u" ",  u"a\tb", u"a\nb", u"\u8868\\", u"a\x01"}) {
    EXPECT_FALSE(IsValidInstanceName(name)) << ::testing::PrintToString(name);
  }
  EXPECT_FALSE(IsValidInstanceName(std::u16string_view(u"a\0b", 3)));
}

TEST(IsValidInstanceName, RefusesDevices) {
  for (const std::u16string name :
       {u"CON", u"con", u"Nul.txt", u"aux .txt", u"prn", u"COM1", u"com9", u"lpt5.log", u"CONIN$",
        u"conout$", u"CLOCK$", u"clock$.x", u"COM\u00B9", u"com\u00B2.txt", u"LPT\u00B3 .x",
        u"lpt\u00B9"}) {
    EXPECT_FALSE(IsValidInstanceName(name)) << ::testing::PrintToString(name);
  }
}

TEST(IsValidInstanceName, TakesAsManyUnitsAsAFileNameMayHave) {
  EXPECT_TRUE(IsValidInstanceName(std::u16string(255, u'x')));
  EXPECT_FALSE(IsValidInstanceName(std::u16string(256, u'x')));
  EXPECT_TRUE(IsValidInstanceName(std::u16string(255, u'\u8868')));
  EXPECT_FALSE(IsValidInstanceName(std::u16string(256, u'\u8868')));
}

}  // namespace
}  // namespace brantel
