#include "host/alert/text_expander.h"

#include <gtest/gtest.h>

#include <string>
#include <utility>

namespace brantel::host {
namespace {

std::string Harmless(const char* class_name, const std::string& value,
                     std::string_view message_template = "%n") {
  MessageVariables variables;
  EXPECT_TRUE(variables.Assign("n=" + value));
  return HarmlessExpander(variables, class_name)(message_template);
}

TEST(HarmlessExpander, BlanksControlCharactersForEveryClass) {
  for (const char* class_name :
       {"SMTPMail", "Sound", "WinPopup", "LaunchProgram", "Pager", "Voice"}) {
    EXPECT_EQ(Harmless(class_name, "a\r\nQUIT\x1B\x7F\xC2\x9B\tb\x03"), "a  QUIT    b ")
        << class_name;
  }
}

TEST(HarmlessExpander, LeavesTheTemplateAsItIs) {
  EXPECT_EQ(Harmless("Pager", "x", "a\r\n\t%n\x03"), "a\r\n\tx\x03");
  EXPECT_EQ(Harmless("Beeper", "7", "5551234,,%n#;"), "5551234,,7#;");
  EXPECT_EQ(Harmless("Voice", "x", "C:\\waves\\%n.wav"), "C:\\waves\\x.wav");
}

TEST(HarmlessExpander, DialsDigitsAlone) {
  EXPECT_EQ(Harmless("Beeper", "7;ATH0,,12é٣３*#-"), "7012");
  EXPECT_EQ(Harmless("bEEPER", "x;1"), "1");
}

TEST(HarmlessExpander, MakesNoPathOfAWave) {
  EXPECT_EQ(Harmless("Voice", R"(\\far\share/C:a.wav)"), "farshareCa.wav");
  EXPECT_EQ(Harmless("Pager", "C:\\a/b"), "C:\\a/b");
}

TEST(HarmlessExpander, DoublesALoneFullStopInAMail) {
  for (const auto& [text, harmless] : std::initializer_list<std::pair<const char*, const char*>>{
           {"%n", ".."},
           {"a\r\n%n\r\nb", "a\r\n..\r\nb"},
           {"a\n%n\nb", "a\n..\nb"},
           {"a\r%n\rb", "a\r..\rb"},
           {"a\r\n%n", "a\r\n.."},
           {"%n\r\n.\r\n%n", "..\r\n..\r\n.."},
           {"%n\r\n\r\n.%n", "..\r\n\r\n.."},
           {"a%n", "a."},
           {"%nb\r\n", ".b\r\n"},
           {"%n%n\r\n", "..\r\n"}}) {
    EXPECT_EQ(Harmless("SMTPMail", ".", text), harmless) << text;
    EXPECT_EQ(Harmless("smtpmail", ".", text), harmless) << text;
  }
  EXPECT_EQ(Harmless("WinPopup", ".", "a\r\n%n\r\nb"), "a\r\n.\r\nb");
}

TEST(HarmlessExpander, DoesNotExpandWhatItPutsIn) {
  EXPECT_EQ(Harmless("Pager", "%n%C"), "%n%C");
}

TEST(PlainExpander, PutsValuesInAsTheyAre) {
  MessageVariables variables;
  ASSERT_TRUE(variables.Assign("n=.\r\n;C:\\"));
  EXPECT_EQ(PlainExpander(variables)("%n %C"), ".\r\n;C:\\ %C");
}

}  // namespace
}  // namespace brantel::host
