#include "host/text/control_characters.h"

#include <gtest/gtest.h>

namespace brantel::host {
namespace {

TEST(ControlCharacters, AreShownByTheirNumber) {
  EXPECT_EQ(ShowControlCharacters("a\r\nb\tc"), "a<0D><0A>b<09>c");
  EXPECT_EQ(ShowControlCharacters(std::string("\0|\x1F|\x7F", 5)), "<00>|<1F>|<7F>");
  EXPECT_EQ(ShowControlCharacters("\xC2\x80|\xC2\x9F"), "<80>|<9F>");
}

TEST(ControlCharacters, LeaveOtherTextAsItIs) {
  EXPECT_EQ(ShowControlCharacters(""), "");
  EXPECT_EQ(ShowControlCharacters(" ~ Zürich\u00A0☎ 電話 \U0001F4DF <0A>"),
            " ~ Zürich\u00A0☎ 電話 \U0001F4DF <0A>");
  EXPECT_EQ(ShowControlCharacters("\xC2"), "\xC2");
}

}  // namespace
}  // namespace brantel::host
