#include "pager/ucp/ucp_error.h"

#include <gtest/gtest.h>

#include <array>
#include <string>
#include <string_view>

namespace brantel {
namespace {

struct Meaning {
  std::string_view code;
  std::string_view text;
};

constexpr std::array kMeanings = {
    Meaning{"01", "Checksum error"},
    Meaning{"02", "Syntax error"},
    Meaning{"03", "Operation not supported by system"},
    Meaning{"04", "Operation not allowed"},
    Meaning{"05", "Call barring active"},
    Meaning{"06", "AdC invalid"},
    Meaning{"07", "Authentication failure"},
    Meaning{"08", "Legitimization code for all calls, failure"},
    Meaning{"09", "GA not allowed"},
    Meaning{"10", "Reverse charging not allowed"},
    Meaning{"11", "Legitimization code for rev. charging, failure"},
    Meaning{"12", "Deferred delivery not allowed"},
    Meaning{"13", "New AC not valid"},
    Meaning{"14", "New Legitimization code not valid"},
    Meaning{"15", "Standard text not valid"},
    Meaning{"16", "Time period not valid"},
    Meaning{"17", "Message type not supported by system"},
    Meaning{"18", "Message too long"},
    Meaning{"19", "Requested standard text not valid"},
    Meaning{"20", "Address not in list"},
    Meaning{"21", "List full, cannot add address to list"},
};

std::string FailedLookup(int number) {
  return std::to_string(number) + " DEBUG - Unable to load string";
}

TEST(UcpErrorText, GivesTheMeaningOfACode) {
  for (const auto& [code, text] : kMeanings) {
    EXPECT_EQ(UcpErrorText(code), text) << code;
    EXPECT_EQ(UcpErrorText(std::string(code) + "//04\x03"), text) << code;
  }
}

TEST(UcpErrorText, GivesTheNumberOfEveryOtherCode) {
  EXPECT_EQ(UcpErrorText("00"), FailedLookup(10115));
  for (int code = 22; code < 100; ++code) {
    EXPECT_EQ(UcpErrorText(std::to_string(code)),
              FailedLookup(10115 + 16 * (code / 10) + code % 10))
        << code;
  }
}

// Codes behind the last meaning would meet texts of other things.
TEST(UcpErrorText, NeverGivesAnUnrelatedText) {
  EXPECT_EQ(UcpErrorText("22"), FailedLookup(10149));
  EXPECT_EQ(UcpErrorText("23"), FailedLookup(10150));
}

TEST(UcpErrorText, GivesTheNumberOfWhatIsNoCode) {
  using namespace std::string_view_literals;
  EXPECT_EQ(UcpErrorText(""), FailedLookup(9299));
  EXPECT_EQ(UcpErrorText("0"), FailedLookup(10067));
  EXPECT_EQ(UcpErrorText("2"), FailedLookup(10099));
  EXPECT_EQ(UcpErrorText("0A"), FailedLookup(10132));
  EXPECT_EQ(UcpErrorText("1/"), FailedLookup(10130));
  EXPECT_EQ(UcpErrorText("\0\0"sv), FailedLookup(9299));
  EXPECT_EQ(UcpErrorText("\xFF\xFF"), FailedLookup(13634));
}

}  // namespace
}  // namespace brantel
