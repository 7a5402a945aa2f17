#include "web/form_fields.h"

#include <gtest/gtest.h>

#include <ostream>
#include <string>

namespace brantel {
namespace {

using namespace std::string_literals;

struct Case {
  const char* shows;
  std::string form;
  std::string name;
  std::string single_line;
  std::string multi_line;
};

std::ostream& operator<<(std::ostream& out, const Case& c) {
  return out << c.shows;
}

const Case kCases[] = {
    {"empty form", "", "upcode", "", ""},
    {"only field", "upcode=11", "upcode", "11", "11"},
    {"first field", "upcode=11&downcode=12", "upcode", "11", "11"},
    {"middle field", "a=1&upcode=11&b=2", "upcode", "11", "11"},
    {"last field", "a=1&upcode=11", "upcode", "11", "11"},
    {"missing field", "a=1&b=2", "upcode", "", ""},
    {"empty value at the end", "a=1&upcode=", "upcode", "", ""},
    {"empty value before another field", "upcode=&a=1", "upcode", "", ""},
    {"name without =", "upcode", "upcode", "", ""},
    {"name without =, then another field", "upcode&a=1", "upcode", "", ""},
    {"name without =, later with it", "upcode&upcode=7", "upcode", "7", "7"},
    {"longer name that begins alike", "upcodes=5&upcode=6", "upcode", "6", "6"},
    {"tail of a longer name", "upcode=11&code=7", "code", "11", "11"},
    {"tail of a longer name that comes later", "code=7&upcode=11", "code", "7", "7"},
    {"inside another value", "a=xupcode=5&upcode=6", "upcode", "5", "5"},
    {"first of two", "upcode=1&upcode=2", "upcode", "1", "1"},
    {"other letter case", "UpCode=5", "upcode", "", ""},
    {"plus signs", "upcode=a+b++c+", "upcode", "a b  c ", "a b  c "},
    {"percent escapes", "upcode=a+b%20c", "upcode", "a b%20c", "a b%20c"},
    {"escaped separator", "upcode=a%26b%3Dc%2B&d=1", "upcode", "a%26b%3Dc%2B", "a%26b%3Dc%2B"},
    {"stray percent", "upcode=100%&a=1", "upcode", "100%", "100%"},
    {"equals sign in the value", "upcode=a=b=c&d=1", "upcode", "a=b=c", "a=b=c"},
    {"carriage return", "upcode=one\rtwo&a=1", "upcode", "one", "one\rtwo"},
    {"line feed", "upcode=one\ntwo&a=1", "upcode", "one", "one\ntwo"},
    {"both", "upcode=one\r\ntwo\r\n\r\n&a=1", "upcode", "one", "one\r\ntwo\r\n\r\n"},
    {"line break at the end of the form", "upcode=11\r\n", "upcode", "11", "11\r\n"},
    {"value that begins with a line break", "upcode=\r\n11&a=1", "upcode", "", "\r\n11"},
    {"field on a later line", "a=1\r\nupcode=11&b=2", "upcode", "11", "11"},
    {"plus signs and line breaks", "upcode=+\r\n+&a=1", "upcode", " ", " \r\n "},
    {"empty fields between separators", "&&upcode=11&&", "upcode", "11", "11"},
    {"semicolon", "upcode=11;a=1", "upcode", "11;a=1", "11;a=1"},
    {"tab and blank", "upcode=\t 11&a=1", "upcode", "\t 11", "\t 11"},
    {"8-bit text", "upcode=\xE9\xFF\x80&a=1", "upcode", "\xE9\xFF\x80", "\xE9\xFF\x80"},
    {"NUL in the value", "upcode=1\0002&a=1"s, "upcode", "1", "1"},
    {"NUL before the field", "a=1\0&upcode=11"s, "upcode", "", ""},
    {"NUL within the name", "up\0code=11"s, "upcode", "", ""},
    {"NUL behind the name", "upcode=\0"s, "upcode", "", ""},
    {"separators alone", "&=&=&", "upcode", "", ""},
};

class FormFieldCases : public ::testing::TestWithParam<Case> {};

INSTANTIATE_TEST_SUITE_P(Forms, FormFieldCases, ::testing::ValuesIn(kCases));

TEST_P(FormFieldCases, GiveTheValue) {
  const Case& c = GetParam();
  EXPECT_EQ(FormField(c.form, c.name, ValueEnd::kLineBreak), c.single_line);
  EXPECT_EQ(FormField(c.form, c.name, ValueEnd::kNothing), c.multi_line);
}

TEST(FormField, GivesTheDefaultForAFieldThatIsNotThere) {
  EXPECT_EQ(FormField("", "upcode", ValueEnd::kLineBreak, "a+b"), "a+b");
  EXPECT_EQ(FormField("a=1", "upcode", ValueEnd::kNothing, "a+b"), "a+b");
}

TEST(FormField, GivesTheEmptyValueOfAFieldThatIsThere) {
  EXPECT_EQ(FormField("upcode=", "upcode", ValueEnd::kLineBreak, "default"), "");
  EXPECT_EQ(FormField("upcode=\r\n", "upcode", ValueEnd::kLineBreak, "default"), "");
}

TEST(FormField, TakesAValueOfAnyLength) {
  const std::string value(100000, 'x');
  EXPECT_EQ(FormField("a=1&upcode=" + value + "&b=2", "upcode", ValueEnd::kLineBreak), value);
}

}  // namespace
}  // namespace brantel
