#include "host/alert/message_variables.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

namespace brantel::host {
namespace {

MessageVariables Variables(const std::vector<std::string>& assignments) {
  MessageVariables variables;
  for (const std::string& assignment : assignments) {
    EXPECT_TRUE(variables.Assign(assignment)) << assignment;
  }
  return variables;
}

TEST(MessageVariables, AreReplacedByTheirValues) {
  const auto variables = Variables({"n=Router 7", "C=17"});
  EXPECT_EQ(variables.Expand("%n"), "Router 7");
  EXPECT_EQ(variables.Expand("Down: %n (code %C)."), "Down: Router 7 (code 17).");
  EXPECT_EQ(variables.Expand("%n%C%n"), "Router 717Router 7");
}

TEST(MessageVariables, WithoutAValueStayAsTheyStand) {
  EXPECT_EQ(Variables({}).Expand("%C and %n"), "%C and %n");
  EXPECT_EQ(Variables({"c=1", "N=2"}).Expand("%C and %n"), "%C and %n");
}

TEST(MessageVariables, LeaveOtherTextAlone) {
  const auto variables = Variables({"n=Router"});
  EXPECT_EQ(variables.Expand(""), "");
  EXPECT_EQ(variables.Expand("n and N"), "n and N");
  EXPECT_EQ(variables.Expand("5% off"), "5% off");
  EXPECT_EQ(variables.Expand("%5 %é %\n"), "%5 %é %\n");
  EXPECT_EQ(variables.Expand(std::string("a\0%n", 4)), std::string("a\0Router", 8));
}

TEST(MessageVariables, TakeTwoPercentSignsForOne) {
  const auto variables = Variables({"n=Router"});
  EXPECT_EQ(variables.Expand("%%"), "%");
  EXPECT_EQ(variables.Expand("100%%n"), "100%n");
  EXPECT_EQ(variables.Expand("%%%n"), "%Router");
  EXPECT_EQ(variables.Expand("%%%%"), "%%");
  EXPECT_EQ(variables.Expand("%1%n"), "%1Router");
}

TEST(MessageVariables, LeaveAPercentSignAtTheEnd) {
  const auto variables = Variables({"n=Router"});
  EXPECT_EQ(variables.Expand("%"), "%");
  EXPECT_EQ(variables.Expand("%n%"), "Router%");
  EXPECT_EQ(variables.Expand("%%%"), "%%");
}

TEST(MessageVariables, DoNotExpandTheirValues) {
  EXPECT_EQ(Variables({"n=%C", "C=%n"}).Expand("%n %C"), "%C %n");
  EXPECT_EQ(Variables({"n=100%%"}).Expand("%n"), "100%%");
  EXPECT_EQ(Variables({"n=%"}).Expand("%nC"), "%C");
}

TEST(MessageVariables, TakeAnyValue) {
  EXPECT_EQ(Variables({"n="}).Expand("[%n]"), "[]");
  EXPECT_EQ(Variables({"n=="}).Expand("[%n]"), "[=]");
  EXPECT_EQ(Variables({"n=a=b"}).Expand("[%n]"), "[a=b]");
  EXPECT_EQ(Variables({"n= Zürich "}).Expand("[%n]"), "[ Zürich ]");
  EXPECT_EQ(Variables({"n=old", "n=new"}).Expand("[%n]"), "[new]");
  EXPECT_EQ(Variables({"a=1", "z=2", "A=3", "Z=4"}).Expand("%a%z%A%Z"), "1234");
}

TEST(MessageVariables, AreAssignedInOneFormOnly) {
  for (const char* assignment : {"", "n", "=", "=x", "nn=x", "%n=x", "1=x", "n:x", " n=x", "n =x",
                                 "é=x", "@=x", "[=x", "`=x", "{=x", "%=x"}) {
    MessageVariables variables;
    EXPECT_FALSE(variables.Assign(assignment)) << assignment;
    EXPECT_EQ(variables.Expand("%n"), "%n") << assignment;
  }
}

}  // namespace
}  // namespace brantel::host
