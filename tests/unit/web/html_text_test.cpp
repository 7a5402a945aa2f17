#include "web/html_text.h"

#include <gtest/gtest.h>

#include <string>

namespace brantel {
namespace {

using namespace std::string_literals;

std::string Escaped(std::string_view text) {
  HtmlText html(0);
  html.AppendEscaped(text);
  return std::string(html.view());
}

TEST(HtmlText, WritesTheFourMarkupCharactersAsEntities) {
  EXPECT_EQ(Escaped("<"), "&lt;");
  EXPECT_EQ(Escaped(">"), "&gt;");
  EXPECT_EQ(Escaped("\""), "&quot;");
  EXPECT_EQ(Escaped("&"), "&amp;");
}

TEST(HtmlText, CopiesEveryOtherByte) {
  for (int byte = 0; byte < 256; ++byte) {
    const std::string text(1, static_cast<char>(byte));
    if (text == "<" || text == ">" || text == "\"" || text == "&") continue;
    EXPECT_EQ(Escaped(text), text) << byte;
  }
}

// Sixteen bytes are looked at together, so each character is tried at each place beside every
// neighbour that could be taken for something else.
TEST(HtmlText, FindsMarkupAtEveryPlaceOfALongText) {
  for (const char neighbour : "ab\x01\x80\xFF !#$%';=?"s) {
    for (std::size_t place = 0; place < 40; ++place) {
      const std::string before(place, neighbour);
      const std::string after(40 - place, neighbour);
      EXPECT_EQ(Escaped(before + "<" + after), before + "&lt;" + after);
      EXPECT_EQ(Escaped(before + ">" + after), before + "&gt;" + after);
      EXPECT_EQ(Escaped(before + "\"" + after), before + "&quot;" + after);
      EXPECT_EQ(Escaped(before + "&" + after), before + "&amp;" + after);
    }
  }
}

TEST(HtmlText, CopiesEveryOtherByteOfALongText) {
  std::string plain;
  for (int byte = 0; byte < 256; ++byte)
    plain.push_back(static_cast<char>(byte));
  for (const char markup : {'<', '>', '"', '&'})
    std::erase(plain, markup);
  for (std::size_t start = 0; start < 16; ++start) {
    EXPECT_EQ(Escaped(plain.substr(start)), plain.substr(start));
  }
}

TEST(HtmlText, EscapesWhatIsEscapedAlready) {
  EXPECT_EQ(Escaped("&lt;&amp;quot;"), "&amp;lt;&amp;amp;quot;");
}

TEST(HtmlText, TakesATextOfMarkupAlone) {
  EXPECT_EQ(Escaped(R"(<<>>""&&<">&)"),
            "&lt;&lt;&gt;&gt;&quot;&quot;&amp;&amp;&lt;&quot;&gt;&amp;");
}

TEST(HtmlText, AppendsToWhatStandsThere) {
  HtmlText html(0);
  EXPECT_EQ(html.view(), "");
  html.Append("<b>");
  html.AppendEscaped("a<b");
  html.AppendEscaped("");
  html.Append("");
  html.Append("</b>");
  EXPECT_EQ(html.view(), "<b>a&lt;b</b>");
}

TEST(HtmlText, TakesTextsOfAnyLengthWhateverWasExpected) {
  for (const std::size_t expected_size : {0U, 1U, 20000U}) {
    HtmlText html(expected_size);
    std::string expected;
    for (const std::size_t length : {1U, 15U, 16U, 17U, 1023U, 1024U, 1025U, 5000U}) {
      html.AppendEscaped(std::string(length, '"'));
      html.AppendEscaped(std::string(length, 'x'));
      html.Append(std::string(length, '<'));
      for (std::size_t i = 0; i < length; ++i)
        expected += "&quot;";
      expected += std::string(length, 'x') + std::string(length, '<');
    }
    EXPECT_EQ(html.view(), expected);
  }
}

}  // namespace
}  // namespace brantel
