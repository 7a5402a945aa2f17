#include "host/report/json_text.h"

#include <gtest/gtest.h>

#include <cstddef>
#include <cstdint>
#include <limits>
#include <optional>
#include <string>
#include <vector>

namespace brantel::host {
namespace {

std::string ThereAndBack(const std::string& json) {
  const auto value = ParseJson(json);
  return value ? JsonLine(*value) : "none";
}

TEST(JsonText, WritesEveryKindOfValue) {
  const Record record{{"none", nullptr},
                      {"missing", std::optional<std::string>()},
                      {"flag", true},
                      {"least", std::numeric_limits<std::int64_t>::min()},
                      {"seconds", 0.5},
                      {"text", "\"\n\xC3\xA4"},
                      {"names", std::vector<std::string>{"a", "b"}},
                      {"inner", Record{{"empty", Record()}, {"no", Value::List()}}}};
  EXPECT_EQ(JsonLine(record),
            R"({"none":null,"missing":null,"flag":true,"least":-9223372036854775808,)"
            R"("seconds":0.5,"text":"\"\n)"
            "\xC3\xA4"
            R"(","names":["a","b"],"inner":{"empty":{},"no":[]}})");
  EXPECT_EQ(JsonText(Record{{"a", 1}}), "{\n  \"a\": 1\n}");
}

TEST(JsonText, ReplacesWhatIsNoText) {
  EXPECT_EQ(JsonLine(Record{{"a", "x\xFF"}}), "{\"a\":\"x\xEF\xBF\xBD\"}");
}

TEST(JsonText, ReadsWhatItWrites) {
  for (const std::string json :
       {R"({"a":null,"b":false,"c":-7,"d":1.25,"e":"x","f":[1,"y",{}],"g":{"h":[]}})", "[]", "3"})
    EXPECT_EQ(ThereAndBack(json), json);
  EXPECT_EQ(ThereAndBack("18446744073709551615"), "1.8446744073709552e+19");
}

TEST(JsonText, ReadsTheLastOfMembersOfOneName) {
  EXPECT_EQ(ThereAndBack(R"({"a":1,"b":2,"a":3})"), R"({"a":3,"b":2})");
}

TEST(JsonText, ReadsNothingFromWhatIsNone) {
  for (const char* text : {"", "{", "{\"a\":1", "nul", "{} x", "\"\xFF\"", "{\"a\":1}\n{}"})
    EXPECT_EQ(ParseJson(text), std::nullopt) << text;
}

TEST(JsonText, ReadsNothingThatIsNestedDeeply) {
  const auto nested = [](std::size_t depth) {
    return std::string(depth, '[') + std::string(depth, ']');
  };
  EXPECT_TRUE(ParseJson(nested(8)));
  EXPECT_EQ(ParseJson(nested(9)), std::nullopt);
  EXPECT_EQ(ParseJson(nested(100'000)), std::nullopt);
}

TEST(JsonText, OfALineGivesItsRecord) {
  const auto read = [](const Record& record) { return record.At("a").Whole<std::uint8_t>(); };
  EXPECT_EQ(ReadRecord("{\"a\":255}", read), 255);
  for (const char* line :
       {"", "[1]", "{}", "{\"a\":256}", "{\"a\":-1}", R"({"a":"1"})", "{\"a\":1.5}"})
    EXPECT_EQ(ReadRecord(line, read), std::nullopt) << line;
}

}  // namespace
}  // namespace brantel::host
