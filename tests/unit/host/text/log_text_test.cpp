#include "host/text/log_text.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

namespace brantel::host {
namespace {

std::string RenderAll(const std::vector<std::string>& texts) {
  LogText log;
  std::string rendered;
  for (const std::string& text : texts) {
    rendered += log.Render(text);
  }
  return rendered;
}

TEST(LogText, KeepsText) {
  EXPECT_EQ(RenderAll({"Dialing 5551234"}), "Dialing 5551234");
  EXPECT_EQ(RenderAll({"Z:\\Zürich ☎ 電話 \U0001F4DF ~"}), "Z:\\Zürich ☎ 電話 \U0001F4DF ~");
  EXPECT_EQ(RenderAll({"", "a", "", "b"}), "ab");
}

TEST(LogText, EndsALineAtEveryKindOfLineEnd) {
  EXPECT_EQ(RenderAll({"a\nb"}), "a\nb");
  EXPECT_EQ(RenderAll({"a\r\nb"}), "a\nb");
  EXPECT_EQ(RenderAll({"a\rb"}), "a\nb");
  EXPECT_EQ(RenderAll({"a\r\r\nb\n\nc\n\rd"}), "a\n\nb\n\nc\n\nd");
}

TEST(LogText, JoinsALineEndThatComesInTwoTexts) {
  EXPECT_EQ(RenderAll({"a\r", "\nb"}), "a\nb");
  EXPECT_EQ(RenderAll({"a\r", "", "\nb"}), "a\nb");
  EXPECT_EQ(RenderAll({"a\r", "b\n"}), "a\nb\n");
  EXPECT_EQ(RenderAll({"a\r", "\r", "\n", "\n"}), "a\n\n\n");
}

TEST(LogText, PrintsALineEndAtOnce) {
  LogText log;
  EXPECT_EQ(log.Render("x.ins"), "x.ins");
  EXPECT_EQ(log.Render(" - Failed to load notification from disk."),
            " - Failed to load notification from disk.");
  EXPECT_EQ(log.Render("\r"), "\n");
}

TEST(LogText, ShowsControlCharactersByTheirNumber) {
  EXPECT_EQ(RenderAll({"\x1B[2J"}), "<1B>[2J");
  EXPECT_EQ(RenderAll({"\x06\x1B"
                       "d\x15"}),
            "<06><1B>d<15>");
  EXPECT_EQ(RenderAll({std::string("a\0b", 3)}), "a<00>b");
  EXPECT_EQ(RenderAll({"\t\b\f\v\a\x1F\x7F"}), "<09><08><0C><0B><07><1F><7F>");
  EXPECT_EQ(RenderAll({"\xC2\x80|\xC2\x9B|\xC2\x9F|\xC2\xA0"}), "<80>|<9B>|<9F>|\xC2\xA0");
}

TEST(LogText, ShowsWhatIsNoUtf8AsItIs) {
  EXPECT_EQ(RenderAll({"\xC2"}), "\xC2");
  EXPECT_EQ(RenderAll({"\xC2\xC2\x85",
                       "\xC2"
                       "a"}),
            "\xC2<85>\xC2"
            "a");
}

TEST(LogText, KnowsWhetherALineIsOpen) {
  LogText log;
  EXPECT_TRUE(log.at_line_start());
  log.Render("");
  EXPECT_TRUE(log.at_line_start());
  log.Render("a");
  EXPECT_FALSE(log.at_line_start());
  log.Render("");
  EXPECT_FALSE(log.at_line_start());
  log.Render("\r");
  EXPECT_TRUE(log.at_line_start());
  log.Render("\n");
  EXPECT_TRUE(log.at_line_start());
  log.Render("\x1B");
  EXPECT_FALSE(log.at_line_start());
  log.Render("b\nc");
  EXPECT_FALSE(log.at_line_start());
  log.Render("\n");
  EXPECT_TRUE(log.at_line_start());
}

}  // namespace
}  // namespace brantel::host
