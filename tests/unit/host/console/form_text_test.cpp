#include "host/console/form_text.h"

#include <gtest/gtest.h>

#include <string>

#include "host/console/module_form.h"
#include "host/console/page_template.h"
#include "module/class_descriptions.h"

namespace brantel::host {
namespace {

TEST(FormText, UndoesWhatItEncodes) {
  std::string all;
  for (int byte = 1; byte < 0x80; ++byte)
    all += static_cast<char>(byte);
  all += "\xC3\xA9\xE2\x82\xAC\xF0\x9F\x94\x94";
  EXPECT_EQ(DecodePercents(EncodePercents(all)), all);
  EXPECT_EQ(EncodePercents("a b/c&d=e+f%"), "a%20b%2Fc%26d%3De%2Bf%25");
}

TEST(FormText, TakesNoBrokenEscapesAndNothingButUtf8) {
  for (const char* const text :
       {"%", "%4", "%4g", "%zz", "a%", "%00", "%80", "%C3", "%C3%28", "%C0%AE", "%E0%80%AE",
        "%ED%A0%80", "%F4%90%80%80", "%F5%80%80%80", "%FF", "%E2%82"})
    EXPECT_EQ(DecodePercents(text), std::nullopt) << text;
}

TEST(FormText, ReadsForms) {
  const auto form = FormValues::Parse("a=1&b=x+y%2Bz&empty=&alone&a=2&=none&c=d=e");
  ASSERT_TRUE(form);
  EXPECT_EQ(form->Get("a"), "1");
  EXPECT_EQ(form->Get("b"), "x y+z");
  EXPECT_EQ(form->Get("empty"), "");
  EXPECT_TRUE(form->Has("alone"));
  EXPECT_EQ(form->Get("c"), "d=e");
  EXPECT_EQ(form->Get("missing"), "");
  EXPECT_FALSE(form->Has("missing"));
  EXPECT_FALSE(FormValues::Parse("a=%"));
  EXPECT_EQ(FormValues::Parse("")->pairs().size(), 0U);
}

TEST(FormText, HasAnEndOfPairs) {
  std::string form = "a=1";
  for (int i = 1; i < 100; ++i)
    form += "&a=1";
  EXPECT_TRUE(FormValues::Parse(form));
  EXPECT_FALSE(FormValues::Parse(form + "&a=1"));
}

TEST(FormText, ReadsTargets) {
  const auto target = ParseTarget("/instances/A%20b?x=1&y=%2F");
  ASSERT_TRUE(target);
  EXPECT_EQ(target->segments, (std::vector<std::string>{"instances", "A b"}));
  EXPECT_EQ(target->query.Get("y"), "/");
  EXPECT_TRUE(ParseTarget("/")->segments.empty());
  for (const char* const none : {"", "*", "x", "http://a/", "//", "/a/", "//a", "/a//b", "/../a",
                                 "/a%2Fb", "/a?x=%", "/%", "/a%5Cb", "/C:"})
    EXPECT_FALSE(ParseTarget(none)) << none;
}

TEST(ModuleForm, HandsOverWhatWasTyped) {
  const ClassDescription& mail = *FindClassDescription("SMTPMail");
  const auto form = FormForModule(
      mail, FormValues::Parse("origname=a+b&type=SMTPMail&to=x%40y&message=1%0D%0A2").value());
  EXPECT_EQ(form,
            "page=&origname=a+b&action=&type=SMTPMail&instancename=&gateway=&to=x@y&from=&subject="
            "&message=1\r\n2&end=");
}

TEST(ModuleForm, RefusesWhatTheModuleWouldReadOtherwise) {
  const ClassDescription& mail = *FindClassDescription("SMTPMail");
  for (const char* const form :
       {"to=a%26b", "to=a%2Bb", "to=a%0Db", "message=x%26to%3Dy", "to=from%3Da", "to=%26from%3Da",
        "instancename=message%3Dx", "origname=to%3Dx"})
    EXPECT_FALSE(FormForModule(mail, FormValues::Parse(form).value())) << form;
}

std::string_view PartOfTest(std::string_view name) {
  return name == "part" ? "[{{a}}]" : "";
}

TEST(PageTemplate, FillsIn) {
  PageValues values;
  values.Set("a", "1 < 2").SetFlag("yes", true).SetFlag("no", false);
  values.Add("items").Set("b", "x");
  values.Add("items").Set("b", "y").Set("a", "inner");
  const auto fill = [&](std::string_view text) { return FillTemplate(text, values, PartOfTest); };
  EXPECT_EQ(fill("{{a}}"), "1 &lt; 2");
  EXPECT_EQ(fill("{{#yes}}Y{{/yes}}{{#no}}N{{/no}}{{^no}}n{{/no}}{{^yes}}y{{/yes}}"), "Yn");
  EXPECT_EQ(fill("{{#items}}{{b}}{{>part}} {{/items}}{{^items}}none{{/items}}"),
            "x[1 &lt; 2] y[inner] ");
  EXPECT_EQ(fill("{{#unknown}}x{{/unknown}}{{^unknown}}y{{/unknown}}"), "y");
  for (const char* const wrong : {"{{", "{{#items}}", "{{unknown}}"})
    EXPECT_THROW(fill(wrong), std::logic_error) << wrong;
}

TEST(PageTemplate, EscapesWhateverItFillsIn) {
  EXPECT_EQ(EscapeHtml("<a href='x' class=\"y\">&amp;"),
            "&lt;a href=&#39;x&#39; class=&quot;y&quot;&gt;&amp;amp;");
  EXPECT_EQ(EscapeHtml(std::string("a\0b\x1B\x7F\r\n\t", 8)),
            "a\xE2\x90\x80"
            "b\xE2\x90\x9B\xE2\x90\xA1\r\n\t");
  PageValues values;
  values.Set("a", "{{a}}");
  EXPECT_EQ(FillTemplate("{{a}}", values, PartOfTest), "{{a}}")
      << "what is filled in is no template";
}

}  // namespace
}  // namespace brantel::host
