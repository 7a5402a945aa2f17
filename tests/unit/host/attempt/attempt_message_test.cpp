#include "host/attempt/attempt_message.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "host/attempt/alert_request.h"

namespace brantel::host {
namespace {

TEST(AlertRequest, IsReadBackFromItsLine) {
  AlertRequest request{.module_file = "C:\\Möbel\\a.dll",
                       .class_name = "Beeper",
                       .instance_file = "C:\\Nacht ☎.ins",
                       .event = kServiceDown,
                       .takes_raw_values = true};
  ASSERT_TRUE(request.variables.Assign("n=Router\n\"7\""));
  ASSERT_TRUE(request.variables.Assign("C="));
  const std::string line = RequestLine(request);
  EXPECT_EQ(line.find('\n'), line.size() - 1);
  const auto read = ParseRequest(line);
  ASSERT_TRUE(read);
  EXPECT_EQ(read->module_file, request.module_file);
  EXPECT_EQ(read->class_name, request.class_name);
  EXPECT_EQ(read->instance_file, request.instance_file);
  EXPECT_EQ(read->event, request.event);
  EXPECT_EQ(read->variables.assignments(), request.variables.assignments());
  EXPECT_TRUE(read->takes_raw_values);
}

TEST(AlertRequest, MayNameNoModuleAndNoEvent) {
  const auto read = ParseRequest(RequestLine({.class_name = "Sound", .event = kNoEvent}));
  ASSERT_TRUE(read);
  EXPECT_EQ(read->module_file, std::nullopt);
  EXPECT_EQ(read->event, kNoEvent);
  EXPECT_FALSE(read->takes_raw_values);
}

TEST(AlertRequest, IsReadFromNothingElse) {
  for (const char* line : {"", "{", "[]", "{}", "17", "\"x\"", R"({"module":null,"class":1})"})
    EXPECT_FALSE(ParseRequest(line)) << line;
}

TEST(AttemptMessage, IsReadBackFromItsLine) {
  for (const AttemptMessage& message :
       std::vector<AttemptMessage>{LoggedText{"AT\r\n\x1B[2J\"é\""}, LoggedText{""}, SendResult{0},
                                   SendResult{2}, SendResult{static_cast<std::int32_t>(0x80004005)},
                                   AttemptFault{ExitCode::kWrongUsage, "no such class"}}) {
    const std::string line = MessageLine(message);
    EXPECT_EQ(line.find('\n'), line.size() - 1);
    EXPECT_EQ(ParseMessage(line), message) << line;
  }
}

TEST(AttemptMessage, IsReadFromNothingElse) {
  for (const char* line :
       {"", "{", "[]", "{}", "17", R"({"log":1})", R"({"result":"x"})", R"({"fault":"x"})"})
    EXPECT_FALSE(ParseMessage(line)) << line;
}

}  // namespace
}  // namespace brantel::host
